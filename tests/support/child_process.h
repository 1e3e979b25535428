#pragma once
// A program started for a test (the simulator, the logger, a tool): its
// standard output comes back through a pipe, and it is always stopped and
// reaped, even when the test fails half-way.

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace gc40::testing {

class ChildProcess {
 public:
  ChildProcess(const std::string& binary, const std::vector<std::string>& arguments) {
    int pipeEnds[2];
    if (pipe2(pipeEnds, O_CLOEXEC) != 0) return;
    pid_ = fork();
    if (pid_ == 0) {
      dup2(pipeEnds[1], STDOUT_FILENO);
      std::vector<char*> argv{const_cast<char*>(binary.c_str())};
      for (const std::string& argument : arguments)
        argv.push_back(const_cast<char*>(argument.c_str()));
      argv.push_back(nullptr);
      execv(binary.c_str(), argv.data());
      _exit(127);
    }
    close(pipeEnds[1]);
    output_ = pipeEnds[0];
  }
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;
  ~ChildProcess() {
    stop();
    if (output_ >= 0) close(output_);
  }

  pid_t pid() const { return pid_; }

  // The next line of standard output, or nullopt when none came in time.
  std::optional<std::string> readLine(std::chrono::milliseconds timeout) {
    const auto deadline = std::chrono::steady_clock::now() + timeout;
    for (;;) {
      if (const auto end = buffered_.find('\n'); end != std::string::npos) {
        std::string line = buffered_.substr(0, end);
        buffered_.erase(0, end + 1);
        return line;
      }
      const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
          deadline - std::chrono::steady_clock::now());
      pollfd watch{output_, POLLIN, 0};
      if (left.count() <= 0 || poll(&watch, 1, static_cast<int>(left.count())) <= 0)
        return std::nullopt;
      char chunk[256];
      const ssize_t got = read(output_, chunk, sizeof chunk);
      if (got <= 0) return std::nullopt;
      buffered_.append(chunk, static_cast<std::size_t>(got));
    }
  }

  // Sends `signal` and waits for the end; the wait status, or nullopt when
  // the program was already reaped.
  std::optional<int> stop(int signal = SIGTERM) {
    if (pid_ <= 0) return std::nullopt;
    kill(pid_, signal);
    int status = 0;
    waitpid(pid_, &status, 0);
    pid_ = -1;
    return status;
  }

 private:
  pid_t pid_ = -1;
  int output_ = -1;
  std::string buffered_;
};

// CPU seconds this process has used so far (user and system).
inline double processCpuSeconds() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  const auto seconds = [](const timeval& t) { return t.tv_sec + t.tv_usec / 1e6; };
  return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

}  // namespace gc40::testing
