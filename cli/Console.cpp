#include "cli/Console.h"

#include <algorithm>
#include <cstdio>

#ifdef _WIN32
#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <shellapi.h>
#else
#include <fcntl.h>
#include <unistd.h>
#endif

namespace ormalux::cli {

#ifdef _WIN32

namespace {

std::string utf8(const std::wstring& text)
{
    const auto convert = [&text](char* to, int room) {
        return WideCharToMultiByte(CP_UTF8, 0, text.data(), int(text.size()), to, room, nullptr, nullptr);
    };
    std::string converted(std::size_t(convert(nullptr, 0)), '\0');
    convert(converted.data(), int(converted.size()));
    return converted;
}

/// The files that a pattern stands for, by name; the pattern itself where there are none, as shells leave it.
std::vector<std::wstring> expanded(const std::wstring& argument)
{
    const std::size_t slash = argument.find_last_of(L"\\/:");
    const std::wstring folder = slash == std::wstring::npos ? L"" : argument.substr(0, slash + 1);
    if (argument.starts_with(L'-') || argument.find_first_of(L"*?", folder.size()) == std::wstring::npos)
        return {argument};
    std::vector<std::wstring> names;
    WIN32_FIND_DATAW found;
    const HANDLE search = FindFirstFileW(argument.c_str(), &found);
    if (search != INVALID_HANDLE_VALUE) {
        do {
            if (found.cFileName[0] != L'.')
                names.push_back(folder + found.cFileName);
        } while (FindNextFileW(search, &found));
        FindClose(search);
    }
    if (names.empty())
        return {argument};
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace

Console::Console()
{
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
    m_codePage = GetConsoleOutputCP();
    if (m_codePage != 0)
        SetConsoleOutputCP(CP_UTF8);
}

Console::~Console()
{
    if (m_codePage != 0)
        SetConsoleOutputCP(m_codePage);
}

std::vector<std::string> programArguments(int, char**)
{
    // The narrow arguments have lost what the code page does not know.
    std::vector<std::string> arguments;
    int count = 0;
    if (LPWSTR* const wide = CommandLineToArgvW(GetCommandLineW(), &count)) {
        for (int i = 1; i < count; ++i)
            for (const std::wstring& argument : expanded(wide[i]))
                arguments.push_back(utf8(argument));
        LocalFree(wide);
    }
    return arguments;
}

#else

Console::Console()
{
    // Where the caller has closed one of the three streams, the first file opened would take its number and
    // get what is printed. Standard output stays unwritable, so that its loss is told.
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        if (fcntl(stream, F_GETFD) == -1) [[maybe_unused]]
            const int taken = open("/dev/null", stream == STDERR_FILENO ? O_WRONLY : O_RDONLY);
}

Console::~Console() = default;

std::vector<std::string> programArguments(int argc, char** argv)
{
    return {argv + std::min(argc, 1), argv + argc};
}

#endif

} // namespace ormalux::cli
