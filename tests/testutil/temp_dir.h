#pragma once

#include <boost/filesystem/path.hpp>

#include <string>
#include <utility>
#include <vector>

namespace TestUtil {

/// A fresh directory below the system's temporary directory, removed with everything in it when
/// the object goes out of scope (permissions restored first, so read-only test folders go too).
class TempDir {
public:
    TempDir();
    ~TempDir();
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;

    const boost::filesystem::path& path() const { return m_path; }

    /// Writes `content` to path()/relative, creating parent directories; returns the full path.
    boost::filesystem::path write(const boost::filesystem::path& relative,
                                  const std::string& content = "") const;
    /// Creates path()/relative and its parents; returns the full path.
    boost::filesystem::path mkdir(const boost::filesystem::path& relative) const;

private:
    boost::filesystem::path m_path;
};

/// Sets environment variables for its lifetime and restores their earlier values afterwards.
class ScopedEnvironment {
public:
    ScopedEnvironment() = default;
    ~ScopedEnvironment();
    ScopedEnvironment(const ScopedEnvironment&) = delete;
    ScopedEnvironment& operator=(const ScopedEnvironment&) = delete;

    /// Sets `name`; a null `value` unsets it.
    void set(const std::string& name, const char* value);
    void set(const std::string& name, const std::string& value) { set(name, value.c_str()); }

private:
    struct Saved {
        std::string name;
        bool wasSet;
        std::string value;
    };
    std::vector<Saved> m_saved;
};

/// The whole content of a file ("" when it cannot be read).
std::string readFile(const boost::filesystem::path& file);

} // namespace TestUtil
