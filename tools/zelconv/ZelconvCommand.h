// Subcommands of zelconv. Each Cmd*.cpp defines one ZelconvCommand and registers it
// with a static ZelconvRegistration; main() dispatches by name.
#pragma once

#include <optional>
#include <string>
#include <vector>

// The arguments behind the subcommand's name. Options are consumed as they are
// asked for; whatever is left at Finish() is an error.
class ZelconvArgs {
public:
    ZelconvArgs(int argc, char** argv);

    // True when --name stands among the arguments (removes every occurrence).
    bool Flag(const char* name);
    // The value behind the last --name (or --name=value); nullopt when absent.
    // A --name without a value is recorded as an error.
    std::optional<std::string> Value(const char* name);
    // Every value of a repeated --name, in order.
    std::vector<std::string> Values(const char* name);
    // The arguments that are not options ("-" and negative numbers count as values).
    std::vector<std::string> Positionals();
    // False with a message when an option is unknown or lacks its value.
    bool Finish(std::string& error);

private:
    std::vector<std::string> m_args;
    std::vector<bool> m_used;
    std::string m_error;
};

struct ZelconvCommand {
    const char* name;
    const char* synopsis; // one line: "format VALUE --unit N [...]"
    const char* help;     // the options, one per line
    // Returns the process exit code: 0 success, 1 failure of the operation, 2 usage.
    int (*run)(ZelconvArgs& args);
};

class ZelconvRegistration {
public:
    explicit ZelconvRegistration(const ZelconvCommand& command);
};

const std::vector<ZelconvCommand>& ZelconvCommands();

// Prints "zelconv: <message>" to standard error and returns 2.
int ZelconvUsageError(const std::string& message);

// Makes `path` the library's settings file for this run.
void ZelconvApplyProfile(const char* path);

// A whole decimal number that fits an int, with nothing behind it.
bool ZelconvParseInt(const std::string& text, long& out);
// A unit by number or by name (decdeg dms decdms grad gon decgon rev rad m fts fti).
bool ZelconvParseUnit(const std::string& text, long& unit);
