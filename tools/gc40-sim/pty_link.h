#pragma once
// A pseudo-terminal whose slave a reader opens through a symbolic link, as it
// would open a serial device. The link goes away with the object.

#include <filesystem>
#include <optional>
#include <string>

namespace gc40 {

class PtyLink {
 public:
  PtyLink(const PtyLink&) = delete;
  PtyLink& operator=(const PtyLink&) = delete;
  PtyLink(PtyLink&& other) noexcept;
  PtyLink& operator=(PtyLink&&) = delete;
  ~PtyLink();

  // Opens a raw 9600 8N1 pseudo-terminal and points `link` at its slave,
  // replacing a symbolic link there but nothing else. On failure returns
  // nullopt and a message naming the path.
  static std::optional<PtyLink> create(const std::filesystem::path& link, std::string* error);

  // The master side, non-blocking.
  int masterFd() const { return master_; }
  const std::filesystem::path& slavePath() const { return slave_; }
  const std::filesystem::path& linkPath() const { return link_; }

  // Whether anyone holds the slave open now.
  bool readerPresent() const;

 private:
  PtyLink(int master, std::filesystem::path slave, std::filesystem::path link)
      : master_(master), slave_(std::move(slave)), link_(std::move(link)) {}
  int master_ = -1;
  std::filesystem::path slave_;
  std::filesystem::path link_;
};

}  // namespace gc40
