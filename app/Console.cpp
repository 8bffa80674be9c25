#include "app/Console.h"

#include <QByteArray>
#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

#include <cstdio>
#include <string>

#ifdef _WIN32
#include <windows.h>

#include <shellapi.h>
#endif

namespace ormalux::viewer {

#ifdef _WIN32
namespace {

/// The files that a pattern stands for, by name, since the shells there do not tell; the argument itself
/// where there are none.
QStringList expanded(const QString& argument)
{
    const QFileInfo named(QDir::fromNativeSeparators(argument));
    QString pattern = named.fileName();
    if (argument.startsWith(QLatin1Char('-')) ||
        !pattern.contains(QRegularExpression(QStringLiteral("[*?]"))))
        return {argument};
    pattern.replace(QLatin1Char('['), QLatin1String("[[]")); // a bracket is a character of names
    QStringList files;
    for (const QFileInfo& file : named.dir().entryInfoList({pattern}, QDir::Files, QDir::Name))
        files << file.filePath();
    return files.isEmpty() ? QStringList(argument) : files;
}

} // namespace
#endif

QStringList programArguments([[maybe_unused]] int argc, [[maybe_unused]] char** argv)
{
    QStringList arguments;
#ifdef _WIN32
    // The narrow arguments have lost what the code page does not know.
    int count = 0;
    if (LPWSTR* const wide = CommandLineToArgvW(GetCommandLineW(), &count)) {
        for (int i = 1; i < count; ++i)
            arguments << expanded(QString::fromWCharArray(wide[i]));
        LocalFree(wide);
    }
#else
    for (int i = 1; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
#endif
    return arguments;
}

void print(ExitCode code, const QString& text)
{
#ifdef _WIN32
    // A windowed program has no output of its own; it borrows that of the console it was started from.
    if (!GetStdHandle(code == Done ? STD_OUTPUT_HANDLE : STD_ERROR_HANDLE) &&
        AttachConsole(ATTACH_PARENT_PROCESS)) {
        const HANDLE console =
            CreateFileW(L"CONOUT$", GENERIC_WRITE, FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
        const std::wstring line = (text.trimmed() + QLatin1Char('\n')).toStdWString();
        WriteConsoleW(console, line.data(), DWORD(line.size()), nullptr, nullptr);
        CloseHandle(console);
        return;
    }
#endif
    std::FILE* const stream = code == Done ? stdout : stderr;
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, std::size_t(bytes.size()), stream);
    if (!bytes.endsWith('\n'))
        std::fputc('\n', stream);
    std::fflush(stream);
}

} // namespace ormalux::viewer
