#include "e2e/pty_feed.h"

#include <unistd.h>

#include <algorithm>

namespace gc40::bench {

PtyFeed::PtyFeed(std::vector<int> masters) {
  for (const int master : masters) outlets_.push_back(Outlet{master, {}});
}

void PtyFeed::write(std::string_view bytes) {
  for (Outlet& outlet : outlets_) outlet.waiting.append(bytes);
  queued_ += bytes.size();
  flush();
}

void PtyFeed::flush() {
  for (Outlet& outlet : outlets_) {
    while (!outlet.waiting.empty()) {
      const ssize_t taken = ::write(outlet.master, outlet.waiting.data(), outlet.waiting.size());
      if (taken <= 0) break;  // full (EAGAIN): the rest waits for POLLOUT
      outlet.waiting.erase(0, std::size_t(taken));
      outlet.written += std::uint64_t(taken);
    }
  }
}

bool PtyFeed::drained() const {
  return std::all_of(outlets_.begin(), outlets_.end(),
                     [](const Outlet& outlet) { return outlet.waiting.empty(); });
}

void PtyFeed::addWatches(std::vector<pollfd>& watches) const {
  for (const Outlet& outlet : outlets_)
    if (!outlet.waiting.empty()) watches.push_back(pollfd{outlet.master, POLLOUT, 0});
}

}  // namespace gc40::bench
