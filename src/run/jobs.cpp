#include "run/jobs.hpp"

#include <poll.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "run/interrupt.hpp"

namespace velmora {
namespace {

using Clock = std::chrono::steady_clock;
constexpr auto kGrace = std::chrono::seconds(2);

/// Interrupts arrive only while the pool waits, so that none is lost between a look and the wait.
class BlockedInterrupts {
 public:
  BlockedInterrupts() {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
      sigaddset(&signals, signal);
    }
    sigprocmask(SIG_BLOCK, &signals, &before_);
  }
  BlockedInterrupts(const BlockedInterrupts&) = delete;
  BlockedInterrupts& operator=(const BlockedInterrupts&) = delete;
  ~BlockedInterrupts() { sigprocmask(SIG_SETMASK, &before_, nullptr); }

  [[nodiscard]] const sigset_t& Before() const { return before_; }

 private:
  sigset_t before_{};
};

struct Running {
  std::size_t index = 0;
  pid_t process = -1;
  int line = -1;
  std::string received;
  StepPlace place;
  std::optional<Outcome> outcome;
};

class Pool {
 public:
  Pool(std::size_t count, std::size_t atOnce, const Job& job, const JobEvents& events)
      : count_(count), atOnce_(std::max<std::size_t>(atOnce, 1)), job_(job), events_(events) {}

  void Run();

 private:
  bool Start(std::size_t index);
  [[noreturn]] void BeChild(std::size_t index, int descriptor, pid_t parent) const;
  void Wait();
  /// Returns false at the end of the job's messages.
  bool Receive(Running& running);
  void Take(Running& running, std::string_view line);
  void Finish(Running& running);
  void EndAll();

  std::size_t count_;
  std::size_t atOnce_;
  const Job& job_;
  const JobEvents& events_;
  BlockedInterrupts blocked_;
  std::vector<Running> running_;
  bool ending_ = false;
  Clock::time_point deadline_;
};

void Pool::Run() {
  std::size_t next = 0;
  while (true) {
    while (InterruptSignal() == 0 && next < count_ && running_.size() < atOnce_ && Start(next)) {
      ++next;
    }
    if (running_.empty() && (next == count_ || InterruptSignal() != 0)) {
      return;
    }
    Wait();
  }
}

// False when the system has no process left for us and it is worth waiting for one of ours to end.
bool Pool::Start(std::size_t index) {
  int ends[2] = {-1, -1};
  const pid_t parent = getpid();
  const bool connected = socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) == 0;
  const pid_t process = connected ? fork() : -1;
  if (process == 0) {
    close(ends[0]);
    BeChild(index, ends[1], parent);
  }
  const int error = errno;
  if (connected) {
    close(ends[1]);
  }
  if (process > 0) {
    running_.push_back({.index = index, .process = process, .line = ends[0]});
    return true;
  }
  if (connected) {
    close(ends[0]);
  }
  if (!running_.empty()) {
    return false;
  }
  events_.onEnd(index,
                {.failure = StepProblem{{}, std::string("cannot start a process: ") + std::strerror(error)}});
  return true;
}

void Pool::BeChild(std::size_t index, int descriptor, pid_t parent) const {
  LeaveInterruptsToParent();
  std::signal(SIGPIPE, SIG_IGN);
  sigprocmask(SIG_SETMASK, &blocked_.Before(), nullptr);
  // Whatever becomes of the parent, its jobs end with it.
  prctl(PR_SET_PDEATHSIG, SIGTERM);
  if (getppid() != parent) {
    _exit(1);
  }
  const JobReport report(descriptor);
  try {
    report.End(job_(index, report));
  } catch (const std::exception& error) {
    report.End({.failure = StepProblem{{}, error.what()}});
  }
  _exit(0);
}

void Pool::Wait() {
  timespec patience{};
  if (InterruptSignal() != 0) {
    EndAll();
    patience.tv_nsec = 100'000'000;
  }
  std::vector<pollfd> lines;
  for (const Running& running : running_) {
    lines.push_back({.fd = running.line, .events = POLLIN, .revents = 0});
  }
  if (ppoll(lines.data(), lines.size(), ending_ ? &patience : nullptr, &blocked_.Before()) < 0) {
    return;
  }
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (lines[i].revents != 0 && !Receive(running_[i])) {
      Finish(running_[i]);
    }
  }
  std::erase_if(running_, [](const Running& running) { return running.process < 0; });
}

bool Pool::Receive(Running& running) {
  char piece[65536];
  const ssize_t got = read(running.line, piece, sizeof piece);
  if (got <= 0) {
    return got < 0 && errno == EINTR;
  }
  running.received.append(piece, static_cast<std::size_t>(got));
  std::size_t start = 0;
  for (std::size_t end = running.received.find('\n'); end != std::string::npos;
       end = running.received.find('\n', start)) {
    Take(running, std::string_view(running.received).substr(start, end - start));
    start = end + 1;
  }
  running.received.erase(0, start);
  return true;
}

void Pool::Take(Running& running, std::string_view line) {
  JobMessage message = ReadJobMessage(line);
  if (auto* place = std::get_if<StepPlace>(&message)) {
    running.place = *place;
    events_.onStep(running.index, *place);
  } else if (const auto* transcript = std::get_if<TranscriptLine>(&message)) {
    events_.onTranscript(running.index, transcript->text);
  } else if (const auto* claim = std::get_if<OutputClaim>(&message)) {
    AnswerJob(running.line, events_.onClaim(running.index, claim->path));
  } else if (auto* rows = std::get_if<TableRows>(&message)) {
    AnswerJob(running.line, events_.onCollect(running.index, std::move(*rows)));
  } else {
    running.outcome = std::get<Outcome>(std::move(message));
  }
}

void Pool::Finish(Running& running) {
  close(running.line);
  int status = 0;
  while (waitpid(running.process, &status, 0) < 0 && errno == EINTR) {
  }
  running.process = -1;
  if (!running.outcome) {
    running.outcome.emplace();
    if (ending_) {
      running.outcome->interrupted = running.place;
    } else {
      const std::string how = WIFSIGNALED(status)
                                  ? std::string("crashed: ") + strsignal(WTERMSIG(status))
                                  : "its process ended with " + std::to_string(WEXITSTATUS(status));
      running.outcome->failure = StepProblem{running.place, how};
    }
  }
  events_.onEnd(running.index, *running.outcome);
}

// First a request, which lets a job take its temporary files away; past the grace no request.
void Pool::EndAll() {
  const bool late = ending_ && Clock::now() > deadline_;
  if (ending_ && !late) {
    return;
  }
  if (!ending_) {
    ending_ = true;
    deadline_ = Clock::now() + kGrace;
  }
  for (const Running& running : running_) {
    kill(running.process, late ? SIGKILL : SIGTERM);
  }
}

}  // namespace

void RunJobs(std::size_t count, std::size_t atOnce, const Job& job, const JobEvents& events) {
  Pool(count, atOnce, job, events).Run();
}

}  // namespace velmora
