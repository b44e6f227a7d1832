#include "run/batch/jobs.hpp"

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
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "run/batch/interrupt.hpp"

namespace velmora {
namespace {

using Clock = std::chrono::steady_clock;
constexpr auto kGrace = std::chrono::seconds(2);
// Whatever libraries keep for themselves goes with the worker.
constexpr std::size_t kJobsPerWorker = 250;

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

/// A process that does one job after the other.
struct Worker {
  pid_t process = -1;
  int line = -1;
  std::size_t jobsDone = 0;
  std::string received;
  // The job at hand.
  std::optional<std::size_t> job;
  StepMark mark;
};

class Pool {
 public:
  Pool(const std::vector<std::size_t>& jobs, std::size_t atOnce, const Job& job, const JobEvents& events)
      : jobs_(jobs), atOnce_(std::max<std::size_t>(atOnce, 1)), job_(job), events_(events) {}

  void Run();

 private:
  [[nodiscard]] bool HasMore() const { return next_ < jobs_.size() && InterruptSignal() == 0; }
  void GiveOut();
  bool Start();
  [[noreturn]] void BeWorker(int descriptor, const StepMark& mark, pid_t parent) const;
  void Wait();
  /// Returns false at the end of the worker's messages.
  bool Receive(Worker& worker);
  void Take(Worker& worker, std::string_view line);
  void End(Worker& worker, const Outcome& outcome);
  int Reap(Worker& worker);
  void NoteDeath(Worker& worker);
  void EndAll();

  const std::vector<std::size_t>& jobs_;
  std::size_t atOnce_;
  const Job& job_;
  const JobEvents& events_;
  BlockedInterrupts blocked_;
  std::vector<Worker> workers_;
  std::size_t next_ = 0;
  bool ending_ = false;
  Clock::time_point deadline_;
};

void Pool::Run() {
  while (true) {
    GiveOut();
    if (workers_.empty() && !HasMore()) {
      return;
    }
    Wait();
  }
}

// A job for every worker, and a worker for every job that may run. A worker without a job goes.
void Pool::GiveOut() {
  for (Worker& worker : workers_) {
    const bool fresh = worker.jobsDone < kJobsPerWorker;
    if (!worker.job && fresh && HasMore()) {
      worker.job = jobs_[next_++];
      worker.mark.Set({});
      GiveJob(worker.line, *worker.job);
    } else if (!worker.job) {
      Reap(worker);
    }
  }
  std::erase_if(workers_, [](const Worker& worker) { return worker.process < 0; });
  while (HasMore() && workers_.size() < atOnce_ && Start()) {
  }
}

// False when the system has no process left for us and it is worth waiting for one of ours to end.
bool Pool::Start() {
  int ends[2] = {-1, -1};
  const pid_t parent = getpid();
  StepMark mark;
  const bool connected = socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) == 0;
  const pid_t process = connected ? fork() : -1;
  if (process == 0) {
    close(ends[0]);
    BeWorker(ends[1], mark, parent);
  }
  const int error = errno;
  if (connected) {
    close(ends[1]);
  }
  if (process > 0) {
    workers_.push_back({.process = process, .line = ends[0], .job = jobs_[next_++], .mark = std::move(mark)});
    GiveJob(ends[0], *workers_.back().job);
    return true;
  }
  if (connected) {
    close(ends[0]);
  }
  if (!workers_.empty()) {
    return false;
  }
  events_.onEnd(jobs_[next_++],
                {.failure = StepProblem{{}, std::string("cannot start a process: ") + std::strerror(error)}});
  return true;
}

void Pool::BeWorker(int descriptor, const StepMark& mark, pid_t parent) const {
  for (const Worker& other : workers_) {
    close(other.line);  // or it would not hear that the parent has closed it
  }
  LeaveInterruptsToParent();
  std::signal(SIGPIPE, SIG_IGN);
  sigprocmask(SIG_SETMASK, &blocked_.Before(), nullptr);
  // Whatever becomes of the parent, its workers end with it.
  prctl(PR_SET_PDEATHSIG, SIGTERM);
  if (getppid() != parent) {
    _exit(1);
  }
  const JobReport report(descriptor, mark, events_.onStep != nullptr);
  while (const std::optional<std::size_t> job = report.NextJob()) {
    try {
      report.End(job_(*job, report));
    } catch (const std::exception& error) {
      report.End({.failure = StepProblem{{}, error.what()}});
    }
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
  for (const Worker& worker : workers_) {
    lines.push_back({.fd = worker.line, .events = POLLIN, .revents = 0});
  }
  if (ppoll(lines.data(), lines.size(), ending_ ? &patience : nullptr, &blocked_.Before()) < 0) {
    return;
  }
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (lines[i].revents != 0 && !Receive(workers_[i])) {
      NoteDeath(workers_[i]);
    }
  }
  std::erase_if(workers_, [](const Worker& worker) { return worker.process < 0; });
}

bool Pool::Receive(Worker& worker) {
  char piece[65536];
  const ssize_t got = read(worker.line, piece, sizeof piece);
  if (got <= 0) {
    return got < 0 && errno == EINTR;
  }
  worker.received.append(piece, static_cast<std::size_t>(got));
  std::size_t start = 0;
  for (std::size_t end = worker.received.find('\n'); end != std::string::npos;
       end = worker.received.find('\n', start)) {
    Take(worker, std::string_view(worker.received).substr(start, end - start));
    start = end + 1;
  }
  worker.received.erase(0, start);
  return true;
}

void Pool::Take(Worker& worker, std::string_view line) {
  JobMessage message = ReadJobMessage(line);
  if (auto* place = std::get_if<StepPlace>(&message)) {
    events_.onStep(*worker.job, *place);
  } else if (const auto* transcript = std::get_if<TranscriptLine>(&message)) {
    events_.onTranscript(*worker.job, transcript->text);
  } else if (const auto* claim = std::get_if<OutputClaim>(&message)) {
    AnswerJob(worker.line, events_.onClaim(*worker.job, claim->path));
  } else if (const auto* written = std::get_if<WrittenFile>(&message)) {
    events_.onWritten(*worker.job, written->path);
  } else if (auto* rows = std::get_if<TableRows>(&message)) {
    AnswerJob(worker.line, events_.onCollect(*worker.job, std::move(*rows)));
  } else {
    End(worker, std::get<Outcome>(message));
  }
}

void Pool::End(Worker& worker, const Outcome& outcome) {
  const std::size_t job = *worker.job;
  worker.job.reset();
  ++worker.jobsDone;
  events_.onEnd(job, outcome);
}

// A worker whose line is closed ends, if it has not.
int Pool::Reap(Worker& worker) {
  close(worker.line);
  int status = 0;
  while (waitpid(worker.process, &status, 0) < 0 && errno == EINTR) {
  }
  worker.process = -1;
  return status;
}

void Pool::NoteDeath(Worker& worker) {
  const int status = Reap(worker);
  if (!worker.job) {
    return;
  }
  Outcome outcome;
  if (ending_) {
    outcome.interrupted = worker.mark.Get();
  } else {
    const std::string how = WIFSIGNALED(status)
                                ? std::string("crashed: ") + strsignal(WTERMSIG(status))
                                : "its process ended with " + std::to_string(WEXITSTATUS(status));
    outcome.failure = StepProblem{worker.mark.Get(), how};
  }
  End(worker, outcome);
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
  for (const Worker& worker : workers_) {
    kill(worker.process, late ? SIGKILL : SIGTERM);
  }
}

}  // namespace

void RunJobs(const std::vector<std::size_t>& jobs, std::size_t atOnce, const Job& job,
             const JobEvents& events) {
  Pool(jobs, atOnce, job, events).Run();
}

}  // namespace velmora
