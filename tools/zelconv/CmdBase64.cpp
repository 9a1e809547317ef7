// zelconv base64: the library's Base64 pair as a filter from standard input to
// standard output.
#include "ZelconvCommand.h"

#include <Zel260/mail/ZelEncode.h>

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace {

bool readAll(FILE* in, std::vector<unsigned char>& data)
{
    unsigned char chunk[65536];
    size_t n;
    while ((n = std::fread(chunk, 1, sizeof chunk, in)) > 0)
        data.insert(data.end(), chunk, chunk + n);
    return !std::ferror(in);
}

int run(ZelconvArgs& args)
{
    unsigned int lineLength = 76;
    auto lineOption = args.Value("--line-length");
    if (auto v = lineOption) {
        char* end = nullptr;
        errno = 0;
        unsigned long n = std::strtoul(v->c_str(), &end, 10);
        if (v->empty() || *end || (*v)[0] == '-' || errno || n > UINT_MAX)
            return ZelconvUsageError("--line-length needs a number from 0 to 4294967295, not '" + *v + "'");
        lineLength = static_cast<unsigned int>(n);
    }
    auto positionals = args.Positionals();
    std::string error;
    if (!args.Finish(error))
        return ZelconvUsageError(error);
    if (positionals.size() != 1 || (positionals[0] != "encode" && positionals[0] != "decode"))
        return ZelconvUsageError("base64 needs one mode: encode or decode");
    if (lineOption && positionals[0] == "decode")
        return ZelconvUsageError("--line-length is for encode only");

    std::vector<unsigned char> data;
    if (!readAll(stdin, data)) {
        std::fprintf(stderr, "zelconv: can't read standard input\n");
        return 1;
    }
    if (positionals[0] == "encode") {
        CString text = ZelEncodeBase64(data.data(), data.size(), lineLength);
        std::fwrite(text.GetString(), 1, static_cast<size_t>(text.GetLength()), stdout);
    } else {
        data.push_back(0);
        unsigned long n = ZelDecodeBase64(data.data());
        std::fwrite(data.data(), 1, n, stdout);
    }
    return std::fflush(stdout) == 0 ? 0 : 1;
}

const ZelconvRegistration registration({
    "base64",
    "base64 encode|decode [--line-length N]",
    "Reads standard input and writes standard output, byte for byte.\n"
    "  encode           Base64 of the input. A line break \"\\r\\n\" follows every N\n"
    "                   characters of code; the text is then padded with \"=\" to a\n"
    "                   multiple of 4 characters, line breaks counted. Nothing is\n"
    "                   added behind the padding.\n"
    "  decode           the bytes of a Base64 input. Stops at the first \"=\" or zero\n"
    "                   byte; a line break starts a new group of four; other\n"
    "                   characters outside the alphabet are skipped.\n"
    "  --line-length N  characters of code per line when encoding (default 76;\n"
    "                   0 writes one line)",
    run,
});

} // namespace
