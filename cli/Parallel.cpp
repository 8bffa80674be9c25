#include "cli/Parallel.h"

#include "platform/Stdlib.h"

#include <algorithm>
#include <cstdio>
#include <vector>

#if !defined(_WIN32)
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace ormalux::cli {

#if defined(_WIN32)

void inProcesses(std::size_t count, int, const std::function<std::string(std::size_t)>& work,
                 const std::function<void(const std::string&)>& take)
{
    for (std::size_t i = 0; i < count; ++i)
        take(work(i));
}

#else

namespace {

struct Child
{
    pid_t process = -1;
    std::FILE* answers = nullptr;
};

/// The processes of one call. When nobody takes their answers any more they end with the picture they are at.
struct Children : std::vector<Child>
{
    using std::vector<Child>::vector;
    ~Children()
    {
        for (const Child& child : *this)
            if (child.answers)
                std::fclose(child.answers);
        for (const Child& child : *this)
            if (child.process > 0)
                waitpid(child.process, nullptr, 0);
    }
};

/// Every step-th number from first on, one answer a line.
[[noreturn]] void workInChild(int out, std::size_t first, std::size_t step, std::size_t count,
                              const std::function<std::string(std::size_t)>& work)
{
    std::FILE* const stream = fdopen(out, "w");
    for (std::size_t i = first; i < count && stream; i += step) {
        const std::string line = work(i) + "\n";
        if (std::fwrite(line.data(), 1, line.size(), stream) != line.size() || std::fflush(stream) != 0)
            break;
    }
    _exit(0); // the parent's own exit handlers are not for its children
}

bool readLine(std::FILE* stream, std::string& line)
{
    line.clear();
    for (int c; (c = std::fgetc(stream)) != EOF;) {
        if (c == '\n')
            return true;
        line += char(c);
    }
    return false;
}

} // namespace

void inProcesses(std::size_t count, int jobs, const std::function<std::string(std::size_t)>& work,
                 const std::function<void(const std::string&)>& take)
{
    const std::size_t wanted = jobs > 0 ? std::size_t(jobs) : std::size_t(CStdlib::GetNumOfProcessors());
    const std::size_t processes = std::min(wanted, count);
    Children children(processes > 1 ? processes : 0);
    std::fflush(nullptr);
    for (std::size_t i = 0; i < children.size(); ++i) {
        int ends[2];
        if (pipe(ends) != 0)
            continue;
        children[i].process = fork();
        if (children[i].process == 0) {
            close(ends[0]);
            // An elder's pipe that is open here as well would never break.
            for (std::size_t elder = 0; elder < i; ++elder)
                if (children[elder].answers)
                    close(fileno(children[elder].answers));
            workInChild(ends[1], i, processes, count, work);
        }
        close(ends[1]);
        children[i].answers = fdopen(ends[0], "r");
    }
    std::string line;
    for (std::size_t i = 0; i < count; ++i) {
        Child* const child = children.empty() ? nullptr : &children[i % processes];
        // What a child that died or was never born leaves undone is done here.
        take(child && child->answers && child->process > 0 && readLine(child->answers, line) ? line
                                                                                             : work(i));
    }
}

#endif

} // namespace ormalux::cli
