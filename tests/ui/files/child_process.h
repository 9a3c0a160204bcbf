#pragma once

#include <csignal>
#include <functional>
#include <gtest/gtest.h>
#include <random>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace zentro {

/// Does something in a process of its own. What it returned; false when the process crashed.
inline bool InChild(const std::function<bool()>& work) {
    const pid_t child = fork();
    if (child == 0) _exit(work() ? 0 : 1);
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

/// Repeats something in a process of its own that is killed at a moment that nobody chose.
inline void KillWhileWorking(const std::function<void(int)>& work, std::mt19937& random) {
    const pid_t child = fork();
    if (child == 0) {
        for (int i = 0;; ++i) {
            work(i);
        }
    }
    usleep(std::uniform_int_distribution<useconds_t>(2000, 20'000)(random));
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
}

/// For this process no file can grow beyond so many bytes, as on a full disk.
inline void LimitFileSize(rlim_t bytes) {
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{bytes, bytes};
    setrlimit(RLIMIT_FSIZE, &limit);
}

/// Does something in a process of its own that is killed when a file grows beyond so many bytes.
/// True when that happened.
inline bool KillAtFileSize(rlim_t bytes, const std::function<void()>& work) {
    const pid_t child = fork();
    if (child == 0) {
        const rlimit limit{bytes, bytes};
        setrlimit(RLIMIT_FSIZE, &limit);
        const rlimit noCore{0, 0};
        setrlimit(RLIMIT_CORE, &noCore);
        std::signal(SIGXFSZ, SIG_DFL);
        work();
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFSIGNALED(status) && WTERMSIG(status) == SIGXFSZ;
}

/// The number of a process that has ended.
inline pid_t EndedProcess() {
    const pid_t child = fork();
    if (child == 0) _exit(0);
    waitpid(child, nullptr, 0);
    return child;
}

}  // namespace zentro
