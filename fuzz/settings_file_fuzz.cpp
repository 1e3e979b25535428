// The settings file reader over any bytes. A file of another version is left
// unread; whatever a file holds, the file written from the settings it gave
// reads back to settings that write that same file again.

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
  const std::string written = fileOf(loaded);
  Settings reloaded;
  FUZZ_CHECK(gc40::readSettingsFile(written, reloaded));
  FUZZ_CHECK(fileOf(reloaded) == written);
  return 0;
}
