// The settings file reader over any bytes. A file of another version is left
// unread; whatever a file holds, once the settings it gave have been written
// and read back, writing them again gives that same file. (The first writing
// may differ: "%f" keeps six decimals, so a wheel step of -1e-7 is written as
// "-0.000000" while its sign goes to line 55 as "-1.000000", and read back
// it is -0, whose sign is "1.000000".)

#include <string>

#include "fuzz_support.h"
#include "settings/settings_file.h"

namespace {

std::string fileOf(const gc40::Settings& settings) {
  std::string text;
  for (const std::string& line : gc40::settingsFileLines(settings)) text += line;
  return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using gc40::Settings;
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  Settings loaded;
  if (!gc40::readSettingsFile(bytes, loaded)) {
    FUZZ_CHECK(loaded == Settings{});
    return 0;
  }
  Settings reloaded;
  FUZZ_CHECK(gc40::readSettingsFile(fileOf(loaded), reloaded));
  const std::string written = fileOf(reloaded);
  Settings again;
  FUZZ_CHECK(gc40::readSettingsFile(written, again));
  FUZZ_CHECK(fileOf(again) == written);
  return 0;
}
