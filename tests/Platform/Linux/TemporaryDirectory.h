// A directory of a test's own that goes away with it.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

namespace korvane::platform {

class TemporaryDirectory {
public:
    TemporaryDirectory()
    {
        std::string name = (std::filesystem::temp_directory_path() / "korvane-test-XXXXXX").string();
        if (::mkdtemp(name.data()) == nullptr)
            throw std::runtime_error("no temporary directory");
        root = name;
    }
    TemporaryDirectory(const TemporaryDirectory &) = delete;
    TemporaryDirectory &operator=(const TemporaryDirectory &) = delete;
    ~TemporaryDirectory()
    {
        std::error_code ignored;
        std::filesystem::remove_all(root, ignored);
    }
    const std::filesystem::path &path() const { return root; }

private:
    std::filesystem::path root;
};

inline void writeFile(const std::filesystem::path &path, const std::string &contents)
{
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << contents;
}

inline std::string fileText(const std::filesystem::path &path)
{
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

// Sets a variable of the environment for as long as it lives.
class ScopedVariable {
public:
    ScopedVariable(const char *variable, const std::string &value) : name(variable)
    {
        const char *present = std::getenv(variable);
        had = present != nullptr;
        before = had ? present : "";
        ::setenv(variable, value.c_str(), 1);
    }
    ScopedVariable(const ScopedVariable &) = delete;
    ScopedVariable &operator=(const ScopedVariable &) = delete;
    ~ScopedVariable()
    {
        if (had)
            ::setenv(name, before.c_str(), 1);
        else
            ::unsetenv(name);
    }

private:
    const char *name;
    std::string before;
    bool had = false;
};

}  // namespace korvane::platform
