#pragma once

#include <functional>
#include <sys/wait.h>
#include <unistd.h>

/// Runs something in a process of its own and gives how that ended, as waitpid does. The work may end the
/// process at any point; one that comes to its end, ends it with code 0, an exception with 1.
inline int inChild(const std::function<void()>& work) {
    const pid_t child = fork();
    if (child == 0) {
        try {
            work();
        } catch (...) {
            _exit(1);
        }
        _exit(0);
    }
    int status = -1;
    waitpid(child, &status, 0);
    return status;
}

/// The code with which a child that was ended on purpose ends.
inline constexpr int kKilled = 9;

inline bool wasKilled(int status) {
    return WIFEXITED(status) && WEXITSTATUS(status) == kKilled;
}
