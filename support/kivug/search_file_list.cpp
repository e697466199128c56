#include "kivug/search_file_list.h"

#include "kiv/configuration_manager.h"
#include "kiv/system_information.h"

#include <boost/filesystem/operations.hpp>

#include <sys/stat.h>

#include <algorithm>
#include <cstdint>
#include <set>
#include <stdexcept>
#include <utility>

namespace fs = boost::filesystem;

namespace KivUg {

namespace {

/// The identity of a file or directory for "each once": its canonical form when it exists.
fs::path identity(const fs::path& path) {
    boost::system::error_code ec;
    fs::path canonical = fs::canonical(path, ec);
    return ec ? path.lexically_normal() : canonical;
}

void addRoot(std::vector<fs::path>& roots, std::set<fs::path>& seen, const fs::path& root) {
    if (root.empty()) {
        return;
    }
    const fs::path absolute = fs::absolute(root).lexically_normal();
    if (seen.insert(identity(absolute)).second) {
        roots.push_back(absolute);
    }
}

} // namespace

std::vector<fs::path> searchRoots(const std::vector<fs::path>& searchDirectories) {
    std::vector<fs::path> roots;
    std::set<fs::path> seen;
    for (const fs::path& directory : searchDirectories) {
        addRoot(roots, seen, directory);
    }

    const Kiv::SystemInformation system;
    addRoot(roots, seen, system.installPath());
    if (!system.installPath().empty()) {
        const auto configuration = Kiv::ConfigurationManager().currentConfiguration();
        const std::string subdirectory = system.configurationSubdirectory();
        if (configuration->hasCommonConfiguration()) {
            addRoot(roots, seen, configuration->commonConfigPath() / subdirectory);
        }
        if (!configuration->path().empty()) {
            addRoot(roots, seen, configuration->path() / subdirectory);
        }
    }
    return roots;
}

NxSearchFileList::NxSearchFileList(const fs::path& relativeDirectory, std::vector<fs::path> roots)
    : m_relativeDirectory(relativeDirectory), m_roots(std::move(roots)) {}

std::vector<fs::path> NxSearchFileList::filePaths(const Base::WildcardFilter& filter) const {
    // A file is identified by its device and inode, which the one stat that tells a regular file
    // gives too: a site of thousands of documents is listed at every file dialog.
    using FileIdentity = std::pair<std::uint64_t, std::uint64_t>;
    struct Found {
        fs::path path;
        std::string name;
        FileIdentity identity;
    };
    std::vector<fs::path> result;
    std::set<FileIdentity> seen;
    for (const fs::path& root : m_roots) {
        const fs::path directory = root / m_relativeDirectory;
        std::vector<Found> files;
        boost::system::error_code ec;
        for (fs::directory_iterator it(directory, ec), end; !ec && it != end; it.increment(ec)) {
            struct stat status {};
            if (filter.matches(it->path()) && ::stat(it->path().c_str(), &status) == 0 &&
                S_ISREG(status.st_mode)) {
                files.push_back({it->path(),
                                 it->path().filename().string(),
                                 {static_cast<std::uint64_t>(status.st_dev),
                                  static_cast<std::uint64_t>(status.st_ino)}});
            }
        }
        std::sort(files.begin(), files.end(),
                  [](const Found& a, const Found& b) { return a.name < b.name; });
        for (Found& file : files) {
            if (seen.insert(file.identity).second) {
                result.push_back(std::move(file.path));
            }
        }
    }
    return result;
}

std::vector<std::string> NxSearchFileList::fileNames(const Base::WildcardFilter& filter) const {
    std::vector<std::string> names;
    for (const fs::path& file : filePaths(filter)) {
        names.push_back(file.filename().string());
    }
    std::sort(names.begin(), names.end());
    names.erase(std::unique(names.begin(), names.end()), names.end());
    return names;
}

fs::path findFile(const std::string& name, const fs::path& relativeDirectory, bool mustExist,
                  const std::vector<fs::path>& roots) {
    for (const fs::path& root : roots) {
        const fs::path candidate = root / relativeDirectory / name;
        boost::system::error_code ec;
        if (fs::is_regular_file(candidate, ec)) {
            return candidate;
        }
    }
    if (mustExist) {
        std::string searched;
        for (const fs::path& root : roots) {
            searched += (searched.empty() ? "" : ", ") + (root / relativeDirectory).string();
        }
        throw std::runtime_error(
            "file '" + name + "' not found in " +
            (searched.empty() ? std::string("an empty search path") : searched));
    }
    return {};
}

} // namespace KivUg
