// Runs a piece of a test as a user without privileges, so that permission bits deny
// as they do for users even when the tests run as root (as in CI).
#pragma once

#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

namespace zeltest {

// Runs `body` in a child process that has given up root (uid and gid 65534) and
// returns the child's exit code: body's result, 99 when root couldn't be given up,
// 98 when the child didn't exit normally.
template <class F>
int runUnprivileged(F body)
{
    pid_t pid = fork();
    if (pid == 0) {
        if (geteuid() == 0 && (setgid(65534) != 0 || setuid(65534) != 0))
            _exit(99);
        _exit(body());
    }
    int status = 0;
    waitpid(pid, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 98;
}

} // namespace zeltest
