#include "TestSupport.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace zeltest {

TempDir::TempDir()
{
    std::string pattern = (std::filesystem::temp_directory_path() / "zel260-test-XXXXXX").string();
    if (!mkdtemp(pattern.data()))
        throw std::runtime_error("mkdtemp failed");
    m_path = pattern;
}

TempDir::~TempDir()
{
    std::error_code ec;
    std::filesystem::permissions(m_path, std::filesystem::perms::owner_all, std::filesystem::perm_options::add, ec);
    std::filesystem::remove_all(m_path, ec);
}

std::string TempDir::file(const std::string& name) const { return m_path + "/" + name; }

std::string TempDir::write(const std::string& name, const std::string& content) const
{
    std::string p = file(name);
    std::filesystem::create_directories(std::filesystem::path(p).parent_path());
    std::ofstream(p, std::ios::binary) << content;
    return p;
}

std::string readFile(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    std::ostringstream s;
    s << in.rdbuf();
    return s.str();
}

} // namespace zeltest
