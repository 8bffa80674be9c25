#pragma once

#include <functional>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace ormalux::cli {

/// An option or an argument of a command.
struct Option
{
    std::string names; ///< "-t,--threshold"; without a dash it is an argument of a position
    std::string help;
    bool required = false;
    std::string fallback{}; ///< shown as the default
    std::string type{};     ///< shown for what it takes
    /// Why a text is refused; empty when it is right.
    std::function<std::string(const std::string& text)> check{};
};

/// What an operator chose: a command with its options read.
using Chosen = std::function<int()>;

/// A command of the program, or the program itself. Options write into values that live as long as it.
class Command
{
public:
    Command(CLI::App* app, Chosen* chosen) : m_app(app), m_chosen(chosen) {}

    /// A command below this one.
    Command add(const std::string& name, const std::string& help);
    bool has(const std::string& name) const;
    /// One of the commands below must be named.
    void needsCommand();
    void text(const Option& option, std::string& value);
    /// One or more.
    void texts(const Option& option, std::vector<std::string>& values);
    /// One at the most; left empty when it is not given.
    void single(const Option& option, std::vector<std::string>& values);
    /// Given as often as wanted, one each time.
    void repeated(const Option& option, std::vector<std::string>& values);
    void number(const Option& option, int& value, int low, int high);
    void flag(const Option& option, bool& value);
    /// The second is refused beside the first.
    void exclusive(const std::string& first, const std::string& second);
    void footer(const std::string& text);
    /// What runs when this command is chosen; it returns the exit code.
    void runs(const Chosen& work);

private:
    CLI::App* m_app;
    Chosen* m_chosen;
};

/// Reads the arguments of the program: the commands are declared by a function. Returns what was chosen, or
/// nothing when `text` is all there is to say (help, version). Throws InputError for bad usage.
Chosen readCommandLine(std::vector<std::string> arguments, const std::function<void(Command&)>& declare,
                       std::string& text);

} // namespace ormalux::cli
