#include "command_options.h"

#include <cctype>
#include <charconv>
#include <cmath>
#include <iostream>

namespace gc40 {

int fail(const std::string& message) {
  std::cerr << "r40: " << message << '\n';
  return kTrouble;
}

std::optional<CommandArguments> parseCommandArguments(const std::vector<std::string>& arguments,
                                                      const std::vector<KnownOption>& known,
                                                      std::string& error) {
  CommandArguments result;
  bool optionsEnded = false;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& argument = arguments[i];
    if (optionsEnded || argument.size() < 2 || argument[0] != '-') {
      result.files.push_back(argument);
      continue;
    }
    if (argument == "--") {
      optionsEnded = true;
      continue;
    }
    const std::size_t equals = argument.find('=');
    const std::string name = argument.substr(0, equals);
    const KnownOption* option = nullptr;
    for (const KnownOption& candidate : known)
      if (candidate.name == name) option = &candidate;
    if (!option) {
      error = "unknown option " + name;
      return std::nullopt;
    }
    if (!option->takesValue) {
      if (equals != std::string::npos) {
        error = name + " takes no value";
        return std::nullopt;
      }
      result.flags.insert(name);
    } else if (equals != std::string::npos) {
      result.values[name] = argument.substr(equals + 1);
    } else if (i + 1 < arguments.size()) {
      result.values[name] = arguments[++i];
    } else {
      error = name + " needs a value";
      return std::nullopt;
    }
  }
  return result;
}

std::optional<double> parseNumber(std::string_view text) {
  if (!text.empty() && text[0] == '+') text.remove_prefix(1);
  double value = 0.0;
  const auto [end, code] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (text.empty() || code != std::errc() || end != text.data() + text.size() ||
      !std::isfinite(value))
    return std::nullopt;
  return value;
}

std::optional<int> parseWholeNumber(std::string_view text) {
  if (!text.empty() && text[0] == '+') text.remove_prefix(1);
  int value = 0;
  const auto [end, code] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (text.empty() || code != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return value;
}

std::optional<int> parseEpsgCode(std::string_view text) {
  std::string prefix(text.substr(0, 5));
  for (char& c : prefix) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  if (prefix == "EPSG:") text.remove_prefix(5);
  const std::optional<int> code = parseWholeNumber(text);
  if (!code || *code <= 0) return std::nullopt;
  return code;
}

void NumberOptions::read(const std::string& name, double& value) {
  if (const auto text = find(name)) {
    if (const std::optional<double> number = parseNumber(*text))
      value = *number;
    else
      complain(name, *text, "a number");
  }
}

void NumberOptions::read(const std::string& name, int& value) {
  if (const auto text = find(name)) {
    if (const std::optional<int> number = parseWholeNumber(*text))
      value = *number;
    else
      complain(name, *text, "a whole number");
  }
}

std::optional<std::string> NumberOptions::find(const std::string& name) const {
  const auto found = arguments_.values.find(name);
  if (found == arguments_.values.end()) return std::nullopt;
  return found->second;
}

void NumberOptions::complain(const std::string& name, const std::string& text, const char* wanted) {
  if (error_.empty()) error_ = name + " wants " + wanted + ", not \"" + text + "\"";
}

const std::vector<KnownOption> kPositionOptions = {{"--layback"}, {"--offset"}, {"--max-gap"}};

void readPositionOptions(NumberOptions& numbers, PositionOptions& options) {
  numbers.read("--layback", options.laybackM);
  numbers.read("--offset", options.crossTrackM);
  numbers.read("--max-gap", options.maxGapS);
}

}  // namespace gc40
