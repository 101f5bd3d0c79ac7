#include "bench/Process.h"

#include <chrono>
#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace morlik::bench
{

Usage RunProcess(const std::vector<std::string>& command)
{
    std::vector<char*> arguments;
    for (const std::string& word : command)
        arguments.push_back(const_cast<char*>(word.c_str())); // NOLINT: the call's own type
    arguments.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    for (const int stream : {STDOUT_FILENO, STDERR_FILENO})
        posix_spawn_file_actions_addopen(&actions, stream, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    const auto start = std::chrono::steady_clock::now();
    const int error =
        posix_spawn(&child, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0)
        return {};

    int status = 0;
    rusage used{};
    if (wait4(child, &status, 0, &used) < 0)
        return {};
    const std::chrono::duration<double, std::milli> wall = std::chrono::steady_clock::now() - start;
    const auto milliseconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
    };
    return {milliseconds(used.ru_utime) + milliseconds(used.ru_stime), wall.count(),
            static_cast<double>(used.ru_maxrss) / 1024.0,
            WIFEXITED(status) && WEXITSTATUS(status) == 0};
}

} // namespace morlik::bench
