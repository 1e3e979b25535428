// What --list-ports and the port dialogs say about the serial adapters found,
// fed made-up adapters: no hardware needed.

#include <gtest/gtest.h>

#include <sstream>

#include "app/start_up.h"
#include "harness/temp_folder.h"
#include "platform/serial_adapters.h"

namespace gc40 {
namespace {

const std::vector<SerialAdapter> kAdapters{
    {"/dev/ttyUSB7", "FT232R USB UART", "FTDI", "/dev/serial/by-id/usb-FTDI-if00"},
    {"/dev/ttyACM0", "", "u-blox AG", ""}};

// An adapter is found behind a port by its device or its by-id link; the map
// comes from the file and --port, and listing it creates nothing.
TEST(PortListing, MapBesideTheAdaptersFound) {
  testing::TempFolder folder;
  const auto mapFile = folder.path() / "GC40" / "FLDINI" / "PORTS.INI";
  testing::writeBytes(mapFile, "COM2:=/dev/serial/by-id/usb-FTDI-if00\n");
  CommandLine options;
  options.storage = folder.path() / "GC40";
  options.portOverrides = {{2, "/dev/ttyACM0"}};
  std::ostringstream warnings;
  const std::string listing = portListing(options, nullptr, kAdapters, warnings);
  EXPECT_EQ(listing.substr(0, listing.find("  COM4:")),
            "Port map (" + mapFile.string() +
                "):\n"
                "  COM1:   /dev/ttyUSB0\n"
                "  COM2:   /dev/serial/by-id/usb-FTDI-if00  FT232R USB UART (FTDI)\n"
                "  COM3:   /dev/ttyACM0                     u-blox AG\n");
  EXPECT_EQ(listing.substr(listing.find("  COM12:")),
            "  COM12:  /dev/ttyUSB11\n"
            "Serial adapters found:\n"
            "  /dev/ttyUSB7  FT232R USB UART (FTDI)\n"
            "                /dev/serial/by-id/usb-FTDI-if00\n"
            "  /dev/ttyACM0  u-blox AG\n");
  options.storage = folder.path() / "elsewhere";
  EXPECT_TRUE(portListing(options, nullptr, {}, warnings)
                  .ends_with("  COM12:  /dev/ttyUSB11\n"
                             "Serial adapters found: none\n"));
  EXPECT_FALSE(std::filesystem::exists(folder.path() / "elsewhere"));
  EXPECT_EQ(warnings.str(), "");
}

TEST(PortListing, DialogNoteAndByIdLinks) {
  EXPECT_EQ(adapterNote(kAdapters, "/dev/serial/by-id/usb-FTDI-if00"), "FT232R USB UART (FTDI)");
  EXPECT_EQ(adapterNote(kAdapters, "/tmp/gps"), "no adapter; found ttyUSB7 ttyACM0");
  EXPECT_EQ(adapterNote({}, "/dev/ttyUSB0"), "no adapter found");
  EXPECT_EQ(adapterName({"/dev/ttyS0", "", "", ""}), "(no description)");
  // The by-id folder holds links; the one leading to the device is named.
  testing::TempFolder folder;
  const auto device = folder.path() / "ttyUSB3";
  testing::writeBytes(device, "");
  testing::writeBytes(folder.path() / "ttyUSB4", "");
  std::filesystem::create_directory(folder.path() / "by-id");
  std::filesystem::create_symlink("../ttyUSB4", folder.path() / "by-id" / "usb-other");
  std::filesystem::create_symlink("../ttyUSB3", folder.path() / "by-id" / "usb-mine");
  EXPECT_EQ(linkLeadingTo(folder.path() / "by-id", device),
            (folder.path() / "by-id" / "usb-mine").string());
  EXPECT_EQ(linkLeadingTo(folder.path() / "none", device), "");
  EXPECT_EQ(linkLeadingTo(folder.path() / "by-id", folder.path() / "gone"), "");
}

}  // namespace
}  // namespace gc40
