// zelconv: the library's conversions from the command line.
#include "ZelconvCommand.h"

#include <cstdio>
#include <cstdlib>
#include <cctype>
#include <cstring>
#include <string>

namespace {

std::vector<ZelconvCommand>& registry()
{
    static std::vector<ZelconvCommand> commands;
    return commands;
}

bool isOption(const std::string& a)
{
    if (a.size() < 2 || a[0] != '-' || a == "-")
        return false;
    // "-12.5" and "-0 30 0" are values, not options.
    return !(std::isdigit(static_cast<unsigned char>(a[1])) || a[1] == '.' || a[1] == ' ');
}

void printUsage(FILE* out)
{
    std::fprintf(out, "usage: zelconv COMMAND [OPTIONS]\n\nCommands:\n");
    for (const auto& c : registry())
        std::fprintf(out, "  zelconv %s\n", c.synopsis);
    std::fprintf(out, "\nEvery command takes --profile FILE: the settings file for this run.\n"
                      "zelconv COMMAND --help describes a command's options.\n");
}

} // namespace

ZelconvArgs::ZelconvArgs(int argc, char** argv) : m_args(argv, argv + argc), m_used(m_args.size(), false) {}

bool ZelconvArgs::Flag(const char* name)
{
    bool found = false;
    for (size_t i = 0; i < m_args.size(); ++i)
        if (!m_used[i] && m_args[i] == name)
            found = m_used[i] = true;
    return found;
}

std::optional<std::string> ZelconvArgs::Value(const char* name)
{
    auto all = Values(name);
    if (all.empty())
        return std::nullopt;
    return all.back();
}

std::vector<std::string> ZelconvArgs::Values(const char* name)
{
    std::vector<std::string> out;
    const std::string eq = std::string(name) + "=";
    for (size_t i = 0; i < m_args.size(); ++i) {
        if (m_used[i])
            continue;
        if (m_args[i] == name) {
            m_used[i] = true;
            if (i + 1 < m_args.size() && !m_used[i + 1]) {
                m_used[i + 1] = true;
                out.push_back(m_args[++i]);
            } else {
                m_error = std::string("option ") + name + " needs a value";
            }
        } else if (m_args[i].rfind(eq, 0) == 0) {
            m_used[i] = true;
            out.push_back(m_args[i].substr(eq.size()));
        }
    }
    return out;
}

std::vector<std::string> ZelconvArgs::Positionals()
{
    std::vector<std::string> out;
    for (size_t i = 0; i < m_args.size(); ++i)
        if (!m_used[i] && !isOption(m_args[i])) {
            m_used[i] = true;
            out.push_back(m_args[i]);
        }
    return out;
}

bool ZelconvArgs::Finish(std::string& error)
{
    if (!m_error.empty()) {
        error = m_error;
        return false;
    }
    for (size_t i = 0; i < m_args.size(); ++i)
        if (!m_used[i]) {
            error = (isOption(m_args[i]) ? "unknown option " : "unexpected argument ") + m_args[i];
            return false;
        }
    return true;
}

ZelconvRegistration::ZelconvRegistration(const ZelconvCommand& command) { registry().push_back(command); }

const std::vector<ZelconvCommand>& ZelconvCommands() { return registry(); }

int ZelconvUsageError(const std::string& message)
{
    std::fprintf(stderr, "zelconv: %s\n", message.c_str());
    return 2;
}

int main(int argc, char** argv)
{
    if (argc < 2 || !std::strcmp(argv[1], "--help") || !std::strcmp(argv[1], "-h")) {
        printUsage(argc < 2 ? stderr : stdout);
        return argc < 2 ? 2 : 0;
    }
    for (const auto& c : registry()) {
        if (std::strcmp(c.name, argv[1]) != 0)
            continue;
        ZelconvArgs args(argc - 2, argv + 2);
        if (args.Flag("--help") || args.Flag("-h")) {
            std::printf("usage: zelconv %s\n\n%s\n  --profile FILE   settings file for this run\n", c.synopsis, c.help);
            return 0;
        }
        if (auto profile = args.Value("--profile")) {
            // Applied before the command reads any setting.
            ZelconvApplyProfile(profile->c_str());
        }
        return c.run(args);
    }
    return ZelconvUsageError(std::string("unknown command ") + argv[1] + " (see zelconv --help)");
}
