#pragma once
// The options of r40's survey commands: "--name VALUE", "--name=VALUE" or
// a flag "--name", anywhere among the file names; "--" ends the options.

#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "survey/reading_positions.h"

namespace gc40 {

// r40's exit status for a bad command line or an input it cannot read.
inline constexpr int kTrouble = 2;

// Prints "r40: MESSAGE" on standard error and gives kTrouble.
int fail(const std::string& message);

struct KnownOption {
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
                                                      const std::vector<KnownOption>& known,
                                                      std::string& error);

// The whole text as a number, as the C locale reads it; nullopt otherwise.
std::optional<double> parseNumber(std::string_view text);
std::optional<int> parseWholeNumber(std::string_view text);

// "EPSG:32633" (any case) or "32633".
std::optional<int> parseEpsgCode(std::string_view text);

// Reads the numeric options, remembering the first that is not a number.
class NumberOptions {
 public:
  explicit NumberOptions(const CommandArguments& arguments) : arguments_(arguments) {}

  void read(const std::string& name, double& value);
  void read(const std::string& name, int& value);
  const std::string& error() const { return error_; }

 private:
  std::optional<std::string> find(const std::string& name) const;
  void complain(const std::string& name, const std::string& text, const char* wanted);

  const CommandArguments& arguments_;
  std::string error_;
};

// --layback M, --offset M and --max-gap S, as every survey command takes them.
extern const std::vector<KnownOption> kPositionOptions;
void readPositionOptions(NumberOptions& numbers, PositionOptions& options);

}  // namespace gc40
