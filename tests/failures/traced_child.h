// A child process that stops after each of its system calls, for tests to look at what it did, to
// meddle, or to end it there.
#pragma once

#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <optional>
#include <string>

namespace exifkeep::test {

class TracedChild {
 public:
  // The child runs `call` and exits with its result.
  template <class Call>
  explicit TracedChild(Call call) : id_(fork()) {
    if (id_ != 0) return;
    if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) _exit(99);
    raise(SIGSTOP);
    _exit(call());
  }
  ~TracedChild() {
    if (!exitCode_) end(SIGKILL);
  }
  TracedChild(const TracedChild&) = delete;
  TracedChild& operator=(const TracedChild&) = delete;

  // False where tracing is not allowed.
  bool begin() {
    wait();
    const auto options = PTRACE_O_EXITKILL | PTRACE_O_TRACESYSGOOD | PTRACE_O_TRACEEXEC;
    return !exitCode_ && ptrace(PTRACE_SETOPTIONS, id_, nullptr, options) == 0;
  }
  // Goes on to the end of the next system call; false when the process has ended.
  bool step() {
    for (;;) {
      ptrace(PTRACE_SYSCALL, id_, nullptr, nullptr);
      wait();
      if (exitCode_) return false;
      __ptrace_syscall_info stop = {};
      ptrace(PTRACE_GET_SYSCALL_INFO, id_, sizeof stop, &stop);
      if (stop.op == PTRACE_SYSCALL_INFO_ENTRY) {
        call_ = static_cast<long>(stop.entry.nr);
        descriptor_ = std::to_string(stop.entry.args[0]);
      }
      if (stop.op != PTRACE_SYSCALL_INFO_EXIT) continue;
      succeeded_ = !stop.exit.is_error;
      return true;
    }
  }
  // Sends a signal and lets the child go until it ends.
  void end(int signal) {
    ::kill(id_, signal);
    ptrace(PTRACE_DETACH, id_, nullptr, nullptr);
    wait();
  }

  // The call that has just succeeded, else -1; and what its first argument has open.
  long call() const { return succeeded_ ? call_ : -1; }
  std::string openFile() const { return "/proc/" + std::to_string(id_) + "/fd/" + descriptor_; }
  // 128 more than the signal, if one ended it.
  std::optional<int> exitCode() const { return exitCode_; }

 private:
  void wait() {
    int status = 0;
    waitpid(id_, &status, 0);
    if (WIFEXITED(status)) exitCode_ = WEXITSTATUS(status);
    if (WIFSIGNALED(status)) exitCode_ = 128 + WTERMSIG(status);
  }

  pid_t id_;
  std::optional<int> exitCode_;
  long call_ = 0;
  std::string descriptor_;
  bool succeeded_ = false;
};

}  // namespace exifkeep::test
