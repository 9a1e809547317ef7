// zelconv find: the library's file search from the command line.
#include "ZelconvCommand.h"

#include <Zel260/platform/Win32Error.h>
#include <Zel260/shell/CZelFileList.h>

#include <cstdio>
#include <cstring>
#include <string>

#include <unistd.h>

namespace {

struct SortName {
    const char* name;
    CZelFileList::eSortMode mode;
};
constexpr SortName kSorts[] = {
    {"none", CZelFileList::eSortNone},
    {"name", CZelFileList::eSortFilename},
    {"fullname", CZelFileList::eSortFullFilename},
    {"altname", CZelFileList::eSortAlternateFilename},
    {"created", CZelFileList::eSortCreationTime},
    {"written", CZelFileList::eSortLastWriteTime},
    {"accessed", CZelFileList::eSortLastAccessTime},
    {"size", CZelFileList::eSortSize},
};

// The progress line lives on standard error, so that the names on standard output
// stay clean when they are piped while a person watches the terminal.
struct Progress {
    int directories = 0;
    int scans = 0;
    size_t width = 0;
};
Progress g_progress;

void showProgress(const char* what, const char* path)
{
    std::string line = std::string(what) + std::to_string(g_progress.directories) + " folders, scan " +
                       std::to_string(g_progress.scans) + ": " + path;
    if (line.size() > 100)
        line = line.substr(0, 97) + "...";
    std::string pad(g_progress.width > line.size() ? g_progress.width - line.size() : 0, ' ');
    std::fprintf(stderr, "\r%s%s", line.c_str(), pad.c_str());
    std::fflush(stderr);
    g_progress.width = line.size();
}

void onDirectory(DWORD, int number, const char* path)
{
    g_progress.directories = number;
    showProgress("collecting: ", path);
}

void onScan(DWORD, int number, const char* path)
{
    g_progress.scans = number;
    showProgress("searching: ", path);
}

void clearProgress()
{
    if (g_progress.width)
        std::fprintf(stderr, "\r%s\r", std::string(g_progress.width, ' ').c_str());
}

int runFind(ZelconvArgs& args)
{
    bool recursive = args.Flag("--recursive");
    bool count = args.Flag("--count");
    std::vector<std::string> patterns = args.Values("--pattern");
    std::optional<std::string> sort = args.Value("--sort");
    std::vector<std::string> pos = args.Positionals();
    std::string error;
    if (!args.Finish(error))
        return ZelconvUsageError(error);
    if (pos.size() != 1)
        return ZelconvUsageError("find needs one PATH/PATTERN");

    CZelFileList::eSortMode mode = CZelFileList::eSortNone;
    if (sort) {
        bool known = false;
        for (const SortName& s : kSorts)
            if (*sort == s.name || *sort == std::to_string(static_cast<int>(s.mode))) {
                mode = s.mode;
                known = true;
            }
        if (!known)
            return ZelconvUsageError("unknown sort mode " + *sort);
    }

    CZelFileList list(pos[0].c_str(), recursive ? 1 : 0, 1, 0);
    for (const std::string& p : patterns)
        if (!list.AddSearchPattern(p.c_str()))
            return ZelconvUsageError("a pattern can't hold a separator: " + p);
    bool tty = isatty(STDERR_FILENO) == 1;
    if (tty) {
        list.SetCallbackSearchDirectory(onDirectory, 0);
        list.SetCallbackSearchInDirectory(onScan, 0);
    }
    list.DoIt();
    if (tty)
        clearProgress();
    // One sort at the end gives the order that sorting after every scan gives, since
    // the sort is stable, without sorting the growing list again and again.
    if (mode != CZelFileList::eSortNone)
        list.Sort(mode);

    if (list.Failed()) {
        DWORD e = list.GetLastError();
        std::fprintf(stderr, "zelconv: search failed: %s (error %u)\n", ZelSystemErrorText(e).GetString(),
                     static_cast<unsigned>(e));
        return 1;
    }
    if (count) {
        std::printf("%zu\n", list.AllFullFilenames().size());
        return 0;
    }
    for (const CString& name : list.AllFullFilenames())
        std::printf("%s\n", name.GetString());
    return 0;
}

const ZelconvRegistration registration({
    "find",
    "find PATH/PATTERN [--recursive] [--pattern P]... [--sort MODE] [--count]",
    "Finds the files in PATH that match PATTERN (\"*\" any run, \"?\" one character,\n"
    "\"*.*\" every name, case ignored) and prints their full names, one a line, in the\n"
    "search's order: each folder in turn, within it each pattern in turn.\n"
    "  --recursive      search every subfolder too (symbolic links to folders are not\n"
    "                   followed)\n"
    "  --pattern P      a further pattern, after PATTERN; may be repeated; a file that\n"
    "                   several patterns match is listed once for each\n"
    "  --sort MODE      none (found order), name (descending), fullname, altname,\n"
    "                   created, written, accessed, size (ascending); or 0-7\n"
    "  --count          print only the number of files found\n"
    "On a terminal a progress line on standard error shows the folder being searched.\n"
    "Unreadable folders count as empty; any other error ends the search with exit 1.",
    runFind,
});

} // namespace
