// Rewrites the .chk listing beside each GPS capture (*.log) of a folder, the
// file the GPS tests compare the logger's handling with. Run it through the
// regenerate-gps-chk target after a change meant to alter that handling, and
// read the diff before committing it.

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <vector>

#include "support/gps_printing.h"
#include "support/temp_folder.h"

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: " << argv[0] << " CAPTURES_FOLDER\n";
    return 2;
  }
  std::vector<std::filesystem::path> captures;
  for (const auto& entry : std::filesystem::directory_iterator(argv[1]))
    if (entry.path().extension() == ".log") captures.push_back(entry.path());
  std::sort(captures.begin(), captures.end());
  for (const std::filesystem::path& capture : captures) {
    gc40::GpsCaptureReader reader;
    reader.feed(gc40::testing::readBytes(capture));
    const auto chk = capture.string() + ".chk";
    gc40::testing::writeBytes(chk, gc40::gpsChkListing(capture.filename().string(), reader.lines));
    std::cout << chk << ": " << reader.lines.size() << " lines\n";
  }
  return captures.empty() ? 1 : 0;
}
