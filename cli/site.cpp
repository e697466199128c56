#include "site.h"

#include "base/wildcard_filter.h"
#include "kiv/site.h"
#include "kivug/search_file_list.h"

#include <boost/filesystem/operations.hpp>

#include <algorithm>
#include <cstdlib>
#include <fstream>

namespace fs = boost::filesystem;

namespace QorfmtCli {

namespace {

void setEnvironment(const char* name, const std::string& value) {
    if (!value.empty()) {
        ::setenv(name, value.c_str(), 1);
    }
}

/// The roots along the search path the command line was given (--search-path, or
/// QORFMT_SEARCH_PATH), where the configurator asks NX for its search path.
std::vector<fs::path> searchRoots() {
    const char* path = std::getenv("QORFMT_SEARCH_PATH");
    const std::string text = path ? path : "";
    std::vector<fs::path> directories;
    std::string::size_type start = 0;
    while (start < text.size()) {
        const auto colon = std::min(text.find(':', start), text.size());
        if (colon > start) {
            directories.emplace_back(text.substr(start, colon - start));
        }
        start = colon + 1;
    }
    return KivUg::searchRoots(directories);
}

} // namespace

void applySiteOptions(const SiteOptions& options) {
    if (!options.site.empty()) {
        boost::system::error_code ec;
        if (!fs::is_directory(options.site, ec)) {
            throw InputError(options.site + ": the site is not a directory");
        }
        setEnvironment("QORFMT_SITE", fs::absolute(options.site).lexically_normal().string());
    } else if (const char* site = std::getenv("QORFMT_SITE")) {
        boost::system::error_code ec;
        if (*site && !fs::is_directory(site, ec)) {
            throw InputError(std::string("QORFMT_SITE=") + site + ": the site is not a directory");
        }
    }
    setEnvironment("QORFMT_CONFIGURATION", options.configuration);
    setEnvironment("QORFMT_SEARCH_PATH", options.searchPath);
    try {
        searchRoots();
    } catch (const std::exception& e) {
        throw InputError(e.what());
    }
}

bool siteKnown() {
    return !Kiv::siteDirectoryFromEnvironment().empty();
}

std::vector<fs::path> siteDocuments() {
    try {
        return KivUg::NxSearchFileList("format_defs", searchRoots())
            .filePaths(Base::WildcardFilter("*.fordef"));
    } catch (const std::exception& e) {
        throw InputError(e.what());
    }
}

std::vector<fs::path> documentFolders() {
    std::vector<fs::path> folders;
    try {
        for (const fs::path& root : searchRoots()) {
            folders.push_back(root / "format_defs");
        }
    } catch (const std::exception& e) {
        throw InputError(e.what());
    }
    return folders;
}

fs::path findAlongSearchPath(const std::string& name, const std::string& folder) {
    if (name.empty()) {
        return {};
    }
    try {
        return KivUg::findFile(name, folder, false, searchRoots());
    } catch (const std::exception& e) {
        throw InputError(e.what());
    }
}

std::string displayPath(const fs::path& path) {
    if (!path.is_absolute()) {
        return path.string();
    }
    boost::system::error_code ec;
    const fs::path here = fs::current_path(ec);
    return displayPath(path, ec ? fs::path() : here);
}

std::string displayPath(const fs::path& path, const fs::path& here) {
    if (!path.is_absolute() || here.empty()) {
        return path.string();
    }
    // Most paths (a site's listing) lie plainly below the working folder: no "." or ".." and no
    // doubled separator in either, so that the rest after it is the relative path.
    const std::string& text = path.string();
    const std::string& base = here.string();
    const auto plain = [](const std::string& p) {
        return p.find("/.") == std::string::npos && p.find("//") == std::string::npos;
    };
    if (text.size() > base.size() + 1 && text.compare(0, base.size(), base) == 0 &&
        text[base.size()] == '/' && base.back() != '/' && text.back() != '/' && plain(text) &&
        plain(base)) {
        return text.substr(base.size() + 1);
    }
    const fs::path relative = path.lexically_normal().lexically_relative(here);
    if (relative.empty() || *relative.begin() == "..") {
        return path.string();
    }
    return relative.string();
}

bool sameFile(const fs::path& a, const fs::path& b) {
    boost::system::error_code ec;
    return fs::equivalent(a, b, ec) ||
           fs::absolute(a).lexically_normal() == fs::absolute(b).lexically_normal();
}

} // namespace QorfmtCli
