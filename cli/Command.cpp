#include "cli/Command.h"

#include "cli/Input.h"
#include "cli/PictureModule.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <sstream>

namespace ormalux::cli {

namespace {

void describe(CLI::Option* made, const Option& option)
{
    made->required(option.required);
    if (!option.type.empty())
        made->type_name(option.type);
    if (!option.fallback.empty())
        made->default_str(option.fallback);
    if (option.check)
        made->each([check = option.check](const std::string& text) {
            if (const std::string why = check(text); !why.empty())
                throw CLI::ValidationError("'" + text + "'", why);
        });
}

} // namespace

Command Command::add(const std::string& name, const std::string& help)
{
    return {m_app->add_subcommand(name, help), m_chosen};
}

bool Command::has(const std::string& name) const
{
    const auto commands = m_app->get_subcommands([](const CLI::App*) { return true; });
    return std::any_of(commands.begin(), commands.end(),
                       [&](const CLI::App* app) { return app->get_name() == name; });
}

void Command::needsCommand()
{
    m_app->require_subcommand(1);
}

void Command::text(const Option& option, std::string& value)
{
    describe(m_app->add_option(option.names, value, option.help), option);
}

void Command::texts(const Option& option, std::vector<std::string>& values)
{
    describe(m_app->add_option(option.names, values, option.help), option);
}

void Command::single(const Option& option, std::vector<std::string>& values)
{
    auto* const made = m_app->add_option(option.names, values, option.help);
    made->expected(1);
    describe(made, option);
}

void Command::repeated(const Option& option, std::vector<std::string>& values)
{
    auto* const made = m_app->add_option(option.names, values, option.help);
    made->allow_extra_args(false)->expected(1)->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    describe(made, option);
}

void Command::number(const Option& option, int& value, int low, int high)
{
    auto* const made = m_app->add_option(option.names, value, option.help);
    made->check(CLI::Range(low, high));
    describe(made, option);
}

void Command::flag(const Option& option, bool& value)
{
    describe(m_app->add_flag(option.names, value, option.help), option);
}

void Command::exclusive(const std::string& first, const std::string& second)
{
    m_app->get_option(second)->excludes(m_app->get_option(first));
}

void Command::footer(const std::string& text)
{
    m_app->footer(text);
}

void Command::runs(const Chosen& work)
{
    m_app->callback([chosen = m_chosen, work] { *chosen = work; });
}

Chosen readCommandLine(std::vector<std::string> arguments, const std::function<void(Command&)>& declare,
                       std::string& text)
{
    CLI::App program{"Ormalux: measures and finds parts in camera pictures, without a display.", "ormalux"};
    program.allow_windows_style_options(false); // a slash begins a path on every system
    program.footer("Exit code: 0 done, 1 nothing found or a limit that does not hold, 2 bad usage or input.\n"
                   "'ormalux COMMAND --help' describes a command's options.");
    program.set_version_flag("--version", std::string("ormalux " ORMALUX_VERSION) + buildNote());
    program.require_subcommand(1);
    program.get_formatter()->column_width(34);
    Chosen chosen;
    Command top(&program, &chosen);
    declare(top);
    try {
        std::reverse(arguments.begin(), arguments.end()); // the parser takes them from the end
        program.parse(std::move(arguments));
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() != 0) // neither help nor version
            throw InputError(std::string(error.what()) + "; --help tells more");
        std::ostringstream stream;
        program.exit(error, stream, stream);
        text = stream.str();
        return {};
    }
    return chosen;
}

} // namespace ormalux::cli
