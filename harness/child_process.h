#pragma once
// A program started by a test or a bench (the simulator, a tool, gc40 itself):
// its standard input and output are pipes, and it is always stopped and
// reaped, even when the test fails half-way.

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace gc40::testing {

inline std::chrono::microseconds cpuTime() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return std::chrono::seconds(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
         std::chrono::microseconds(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec);
}

class ChildProcess {
 public:
  // Standard error goes to `errorFile` when given, else stays the test's;
  // `environment` ("NAME=VALUE") is added to the test's own.
  ChildProcess(const std::string& binary, const std::vector<std::string>& arguments,
               const std::optional<std::filesystem::path>& errorFile = std::nullopt,
               std::vector<std::string> environment = {}) {
    int pipeEnds[2], inputEnds[2];
    if (pipe2(pipeEnds, O_CLOEXEC) != 0 || pipe2(inputEnds, O_CLOEXEC) != 0) return;
    std::vector<char*> envp;
    for (std::string& variable : environment) envp.push_back(variable.data());
    for (char** variable = environ; *variable; ++variable) envp.push_back(*variable);
    envp.push_back(nullptr);  // the first of a name counts: the added ones
    pid_ = fork();
    if (pid_ == 0) {
      dup2(inputEnds[0], STDIN_FILENO);
      dup2(pipeEnds[1], STDOUT_FILENO);
      if (errorFile)
        dup2(open(errorFile->c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644), STDERR_FILENO);
      std::vector<char*> argv{const_cast<char*>(binary.c_str())};
      for (const std::string& argument : arguments)
        argv.push_back(const_cast<char*>(argument.c_str()));
      argv.push_back(nullptr);
      execve(binary.c_str(), argv.data(), envp.data());
      _exit(127);
    }
    close(pipeEnds[1]);
    close(inputEnds[0]);
    output_ = pipeEnds[0];
    input_ = inputEnds[1];
  }
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;
  // Asked to end (so that it cleans up after itself), killed only if it won't.
  ~ChildProcess() {
    if (pid_ > 0 && !stop()) kill(pid_, SIGKILL), waitpid(pid_, nullptr, 0);
    if (output_ >= 0) close(output_);
    if (input_ >= 0) close(input_);
  }

  bool send(const std::string& text) const {
    ::signal(SIGPIPE, SIG_IGN);  // a child that has gone is a failed send, not a dead test
    return input_ >= 0 && write(input_, text.data(), text.size()) == ssize_t(text.size());
  }

  // The end of its standard input.
  void closeInput() {
    if (input_ >= 0) close(input_);
    input_ = -1;
  }

  std::optional<std::string> readLine(std::chrono::milliseconds timeout) {
    const auto deadline = std::chrono::steady_clock::now() + timeout;
    std::size_t end;
    while ((end = buffered_.find('\n')) == std::string::npos)
      if (!readMore(deadline)) return std::nullopt;
    std::string line = buffered_.substr(0, end);
    buffered_.erase(0, end + 1);
    return line;
  }

  std::string readAll(std::chrono::milliseconds timeout = std::chrono::seconds(10)) {
    const auto deadline = std::chrono::steady_clock::now() + timeout;
    while (readMore(deadline)) continue;
    return std::exchange(buffered_, {});
  }

  pid_t pid() const { return pid_; }
  // For poll(): readable when readLine has more to read.
  int outputFd() const { return output_; }

  void signal(int number) const {
    if (pid_ > 0) kill(pid_, number);
  }

  // Its exit code (128 + signal when a signal ended it) once it has ended on
  // its own within `timeout`.
  std::optional<int> waitForExit(std::chrono::milliseconds timeout = std::chrono::seconds(2)) {
    const auto deadline = std::chrono::steady_clock::now() + timeout;
    int status = 0;
    while (pid_ > 0 && waitpid(pid_, &status, WNOHANG) != pid_) {
      if (std::chrono::steady_clock::now() > deadline) return std::nullopt;
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    if (pid_ <= 0) return std::nullopt;
    pid_ = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  }

  std::optional<int> stop() {
    signal(SIGTERM);
    signal(SIGCONT);
    return waitForExit(std::chrono::seconds(10));
  }

 private:
  // False at the end of the output, or when nothing comes by the deadline (a
  // deadline that has passed still takes what is there already).
  bool readMore(std::chrono::steady_clock::time_point deadline) {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
        deadline - std::chrono::steady_clock::now());
    pollfd watch{output_, POLLIN, 0};
    if (poll(&watch, 1, static_cast<int>(std::max<std::int64_t>(left.count(), 0))) <= 0)
      return false;
    char chunk[4096];
    const ssize_t got = read(output_, chunk, sizeof chunk);
    if (got > 0) buffered_.append(chunk, static_cast<std::size_t>(got));
    return got > 0;
  }

  pid_t pid_ = -1;
  int output_ = -1;
  int input_ = -1;
  std::string buffered_;
};

}  // namespace gc40::testing
