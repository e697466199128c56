#include "site.h"

#include "base/wildcard_filter.h"
#include "kiv/site.h"
#include "kivug/search_file_list.h"

#include <boost/filesystem/operations.hpp>

#include <cstdlib>

namespace fs = boost::filesystem;

namespace QorfmtCli {

namespace {

void setEnvironment(const char* name, const std::string& value) {
    if (!value.empty()) {
        ::setenv(name, value.c_str(), 1);
    }
}

} // namespace

void applySiteOptions(const SiteOptions& options) {
    if (!options.site.empty()) {
        boost::system::error_code ec;
        if (!fs::is_directory(options.site, ec)) {
            throw InputError(options.site + ": the site is not a directory");
        }
        setEnvironment("QORFMT_SITE", fs::absolute(options.site).lexically_normal().string());
    }
    setEnvironment("QORFMT_CONFIGURATION", options.configuration);
    setEnvironment("QORFMT_SEARCH_PATH", options.searchPath);
    try {
        KivUg::searchRoots();
    } catch (const std::exception& e) {
        throw InputError(e.what());
    }
}

bool siteKnown() {
    return !Kiv::siteDirectoryFromEnvironment().empty();
}

std::vector<fs::path> siteDocuments() {
    try {
        return KivUg::NxSearchFileList("format_defs").filePaths(Base::WildcardFilter("*.fordef"));
    } catch (const std::exception& e) {
        throw InputError(e.what());
    }
}

fs::path findAlongSearchPath(const std::string& name, const std::string& folder) {
    if (name.empty()) {
        return {};
    }
    try {
        return KivUg::findFile(name, folder, false);
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
    if (ec) {
        return path.string();
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
