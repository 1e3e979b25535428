#pragma once
// One stream of bytes written to the masters of one or more pseudo-terminals
// (gc40's port, and the plain copier's beside it): each gets the same bytes at
// the same moment; what a full one cannot take yet waits for room.

#include <poll.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace gc40::bench {

class PtyFeed {
 public:
  explicit PtyFeed(std::vector<int> masters);

  // Queues the bytes and writes what fits now.
  void write(std::string_view bytes);
  // Writes what waits, as far as there is room.
  void flush();
  // How many bytes the first master has taken so far.
  std::uint64_t written() const { return outlets_.front().written; }
  std::uint64_t queued() const { return queued_; }
  // Nothing waits for room.
  bool drained() const;
  // A POLLOUT watch for each master that has bytes waiting.
  void addWatches(std::vector<pollfd>& watches) const;

 private:
  struct Outlet {
    int master;
    std::string waiting;
    std::uint64_t written = 0;
  };
  std::vector<Outlet> outlets_;
  std::uint64_t queued_ = 0;
};

}  // namespace gc40::bench
