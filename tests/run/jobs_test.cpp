#include "run/batch/jobs.hpp"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <map>

#include "run/batch/interrupt.hpp"

namespace velmora {
namespace {

const StepPlace kPlace{.step = 2, .line = 7, .action = "math.add"};

struct Heard {
  std::map<std::size_t, Outcome> outcomes;
  std::map<std::size_t, std::vector<std::string>> lines;

  JobEvents Events() {
    return {.onStep = [](std::size_t, const StepPlace&) {},
            .onTranscript = [this](std::size_t job, std::string_view line) { lines[job].emplace_back(line); },
            .onEnd =
                [this](std::size_t job, const Outcome& outcome) {
                  EXPECT_TRUE(outcomes.emplace(job, outcome).second) << "job " << job << " ended twice";
                }};
  }
};

Outcome CrashSometimes(std::size_t index, const JobReport& report) {
  report.Step(kPlace);
  if (index == 3) {
    std::signal(SIGSEGV, SIG_DFL);  // the sanitizers would report it at length
    const rlimit none{};
    setrlimit(RLIMIT_CORE, &none);
    raise(SIGSEGV);
  }
  if (index == 5) {
    _exit(9);
  }
  if (index == 6) {
    throw std::runtime_error("thrown");
  }
  return {.warnings = {{kPlace, "job \"" + std::to_string(index) + "\"\nwarns"}}};
}

TEST(Jobs, ACrashCostsOneJobAndNamesItsStep) {
  Heard heard;
  RunJobs({0, 1, 2, 3, 4, 5, 6, 7, 8, 9}, 3, CrashSometimes, heard.Events());
  ASSERT_EQ(heard.outcomes.size(), 10U);
  for (const auto& [job, outcome] : heard.outcomes) {
    EXPECT_EQ(outcome.failure.has_value(), job == 3 || job == 5 || job == 6) << job;
  }
  ASSERT_EQ(heard.outcomes[4].warnings.size(), 1U);
  EXPECT_EQ(heard.outcomes[4].warnings[0].why, "job \"4\"\nwarns");
  EXPECT_EQ(PlaceText(heard.outcomes[4].warnings[0].at), "step 2 (math.add, line 7)");
  EXPECT_EQ(PlaceText(heard.outcomes[3].failure->at), "step 2 (math.add, line 7)");
  EXPECT_EQ(heard.outcomes[3].failure->why.rfind("crashed: ", 0), 0U);
  EXPECT_NE(heard.outcomes[5].failure->why.find("9"), std::string::npos);
  EXPECT_EQ(heard.outcomes[6].failure->why, "thrown");
}

TEST(Jobs, LinesOfJobsArriveWholeHoweverMuchTheyTell) {
  const auto line = [](std::size_t job, int i) {
    return std::to_string(job) + ":" + std::to_string(i) +
           std::string(static_cast<std::size_t>(i) * 700, 'x');
  };
  Heard heard;
  RunJobs(
      {0, 1, 2, 3}, 4,
      [&](std::size_t index, const JobReport& report) {
        for (int i = 0; i < 200; ++i) {
          report.TranscriptLine(line(index, i));
        }
        return Outcome{};
      },
      heard.Events());
  for (std::size_t job = 0; job < 4; ++job) {
    ASSERT_EQ(heard.lines[job].size(), 200U);
    for (int i = 0; i < 200; ++i) {
      ASSERT_EQ(heard.lines[job][static_cast<std::size_t>(i)], line(job, i));
    }
  }
}

// Runs in a process of its own, which gets the interrupt. One job listens, one does not; two wait.
void RunInterrupted(int told) {
  CatchInterrupts();
  std::size_t ended = 0;
  std::size_t interrupted = 0;
  RunJobs({0, 1, 2, 3}, 2,
          [told](std::size_t index, const JobReport&) {
            const pid_t self = getpid();
            if (write(told, &self, sizeof self) != sizeof self) {
              _exit(1);
            }
            sigset_t terminate;
            sigset_t before;
            sigemptyset(&terminate);
            sigaddset(&terminate, SIGTERM);
            sigprocmask(SIG_BLOCK, &terminate, &before);
            while (InterruptSignal() == 0 || index == 1) {
              sigsuspend(&before);  // the one moment in which the signal comes
            }
            return Outcome{.interrupted = kPlace};
          },
          {.onStep = {}, .onTranscript = {}, .onEnd = [&](std::size_t, const Outcome& outcome) {
             ++ended;
             interrupted += outcome.interrupted ? 1U : 0U;
           }});
  _exit(InterruptSignal() == SIGINT && ended == 2 && interrupted == 2 ? 42 : 1);
}

TEST(Jobs, AnInterruptEndsEveryJobAndStartsNoOther) {
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  const pid_t runner = fork();
  if (runner == 0) {
    RunInterrupted(ends[1]);
  }
  close(ends[1]);
  pid_t jobs[2] = {0, 0};
  for (pid_t& job : jobs) {
    ASSERT_EQ(read(ends[0], &job, sizeof job), static_cast<ssize_t>(sizeof job));
  }
  kill(runner, SIGINT);
  int status = 0;
  ASSERT_EQ(waitpid(runner, &status, 0), runner);
  EXPECT_TRUE(WIFEXITED(status));
  EXPECT_EQ(WEXITSTATUS(status), 42);
  pid_t another = 0;
  EXPECT_EQ(read(ends[0], &another, sizeof another), 0);  // nobody is left who could write
  close(ends[0]);
  for (const pid_t job : jobs) {
    EXPECT_EQ(kill(job, 0), -1);
  }
}

}  // namespace
}  // namespace velmora
