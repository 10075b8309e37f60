#pragma once
// Runs a program (velmora-cli, as a script or a CI job would) as a child process with empty
// stdin, and collects its exit code and the exact bytes of stdout and stderr.

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <string>
#include <vector>

namespace velmora::test {

struct ChildRun {
    int code = -1;  // -1 when the process did not end normally (signal, timeout)
    std::string out, err;
    bool timedout = false;
};

namespace childdetail {

// Reads what is there; false once the pipe is closed.
inline bool drain(int fd, std::string& into) {
    char buffer[4096];
    const ssize_t n = read(fd, buffer, sizeof buffer);
    if (n > 0) into.append(buffer, static_cast<size_t>(n));
    return n > 0;
}

}  // namespace childdetail

// Runs `program` with `args`. A run longer than `timeoutseconds` of wall time is killed and
// reported as timed out.
inline ChildRun runchild(const std::string& program, const std::vector<std::string>& args, int timeoutseconds) {
    ChildRun run;
    int outpipe[2], errpipe[2];
    if (pipe(outpipe) != 0) return run;
    if (pipe(errpipe) != 0) {
        close(outpipe[0]);
        close(outpipe[1]);
        return run;
    }
    std::vector<char*> argv;
    argv.push_back(const_cast<char*>(program.c_str()));
    for (const std::string& a : args) argv.push_back(const_cast<char*>(a.c_str()));
    argv.push_back(nullptr);

    const pid_t pid = fork();
    if (pid == 0) {
        const int devnull = open("/dev/null", O_RDONLY);
        if (devnull >= 0) dup2(devnull, STDIN_FILENO);
        dup2(outpipe[1], STDOUT_FILENO);
        dup2(errpipe[1], STDERR_FILENO);
        close(outpipe[0]);
        close(errpipe[0]);
        execv(program.c_str(), argv.data());
        _exit(127);
    }
    close(outpipe[1]);
    close(errpipe[1]);
    if (pid < 0) {
        close(outpipe[0]);
        close(errpipe[0]);
        return run;
    }

    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(timeoutseconds);
    pollfd fds[2] = {{outpipe[0], POLLIN, 0}, {errpipe[0], POLLIN, 0}};
    bool outopen = true, erropen = true;
    while (outopen || erropen) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
        if (left.count() <= 0) {
            run.timedout = true;
            kill(pid, SIGKILL);
            break;
        }
        fds[0].fd = outopen ? outpipe[0] : -1;
        fds[1].fd = erropen ? errpipe[0] : -1;
        if (poll(fds, 2, static_cast<int>(left.count())) < 0) continue;
        if (outopen && (fds[0].revents & (POLLIN | POLLHUP | POLLERR))) outopen = childdetail::drain(outpipe[0], run.out);
        if (erropen && (fds[1].revents & (POLLIN | POLLHUP | POLLERR))) erropen = childdetail::drain(errpipe[0], run.err);
    }
    close(outpipe[0]);
    close(errpipe[0]);
    int status = 0;
    waitpid(pid, &status, 0);
    if (!run.timedout && WIFEXITED(status)) run.code = WEXITSTATUS(status);
    return run;
}


#ifdef VELMORA_CLI_PATH
// velmora-cli with `args`; a run longer than `timeoutseconds` is killed.
inline ChildRun runcli(const std::vector<std::string>& args, int timeoutseconds = 120) {
    return runchild(VELMORA_CLI_PATH, args, timeoutseconds);
}
#endif

}  // namespace velmora::test
