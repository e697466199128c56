#include "testutil/temp_dir.h"

#include <boost/filesystem/operations.hpp>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace fs = boost::filesystem;

namespace TestUtil {

TempDir::TempDir() {
    m_path = fs::temp_directory_path() / fs::unique_path("qorfmt-test-%%%%-%%%%-%%%%");
    fs::create_directories(m_path);
}

TempDir::~TempDir() {
    boost::system::error_code ec;
    for (fs::recursive_directory_iterator it(m_path, ec), end; !ec && it != end; it.increment(ec)) {
        fs::permissions(it->path(), fs::owner_all | fs::add_perms, ec);
    }
    fs::permissions(m_path, fs::owner_all | fs::add_perms, ec);
    fs::remove_all(m_path, ec);
}

fs::path TempDir::write(const fs::path& relative, const std::string& content) const {
    const fs::path file = m_path / relative;
    fs::create_directories(file.parent_path());
    std::ofstream out(file.string(), std::ios::binary);
    out << content;
    if (!out) {
        throw std::runtime_error("cannot write test file " + file.string());
    }
    return file;
}

fs::path TempDir::mkdir(const fs::path& relative) const {
    const fs::path directory = m_path / relative;
    fs::create_directories(directory);
    return directory;
}

ScopedEnvironment::~ScopedEnvironment() {
    for (auto it = m_saved.rbegin(); it != m_saved.rend(); ++it) {
        if (it->wasSet) {
            ::setenv(it->name.c_str(), it->value.c_str(), 1);
        } else {
            ::unsetenv(it->name.c_str());
        }
    }
}

void ScopedEnvironment::set(const std::string& name, const char* value) {
    const char* old = std::getenv(name.c_str());
    m_saved.push_back({name, old != nullptr, old ? old : ""});
    if (value) {
        ::setenv(name.c_str(), value, 1);
    } else {
        ::unsetenv(name.c_str());
    }
}

std::string readFile(const fs::path& file) {
    std::ifstream in(file.string(), std::ios::binary);
    std::ostringstream content;
    content << in.rdbuf();
    return content.str();
}

} // namespace TestUtil
