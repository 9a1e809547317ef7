// Helpers shared by the test programs.
#pragma once

#include <string>

namespace zeltest {

// A fresh, empty directory under the system's temporary folder, removed by the
// destructor. Each instance has its own name, so tests may run in parallel.
class TempDir {
public:
    TempDir();
    ~TempDir();
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;
    const std::string& path() const { return m_path; }
    // path() + "/" + name
    std::string file(const std::string& name) const;
    // Writes `content` to file(name) and returns that path.
    std::string write(const std::string& name, const std::string& content) const;

private:
    std::string m_path;
};

// The whole content of a file, or an empty text when it can't be read.
std::string readFile(const std::string& path);

} // namespace zeltest
