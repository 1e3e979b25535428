#pragma once
// The options of r40's survey commands: "--name VALUE", "--name=VALUE" or
// a flag "--name", anywhere among the file names; "--" ends the options.

#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace gc40 {

struct OptionSpec {
  std::string name;  // "--lag", or a short "-o"
  bool takesValue = true;
};

struct CommandArguments {
  std::vector<std::string> files;
  std::map<std::string, std::string> values;
  std::set<std::string> flags;

  bool has(const std::string& name) const { return values.count(name) || flags.count(name); }
};

// Nullopt with `error` for an unknown option or one without its value.
std::optional<CommandArguments> parseCommandArguments(const std::vector<std::string>& arguments,
                                                      const std::vector<OptionSpec>& specs,
                                                      std::string& error);

// The whole text as a number, as the C locale reads it; nullopt otherwise.
std::optional<double> parseNumber(std::string_view text);
std::optional<int> parseWholeNumber(std::string_view text);

// "EPSG:32633" (any case) or "32633".
std::optional<int> parseEpsgCode(std::string_view text);

}  // namespace gc40
