#pragma once

#include <boost/filesystem/path.hpp>

#include <stdexcept>
#include <string>
#include <vector>

namespace QorfmtCli {

/// Input that a command cannot use: a missing site, a configuration that cannot be read, a
/// document or file that cannot be read. The command reports what() and exits with 2.
class InputError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Where documents and templates are looked for, as the configurator finds them.
struct SiteOptions {
    std::string site;          ///< the site directory; empty: QORFMT_SITE, if set
    std::string configuration; ///< empty: QORFMT_CONFIGURATION, else the site's default
    std::string searchPath;    ///< further root directories separated by ':'
};

/// Hands the options to the support library, which reads them from the environment as the CAD
/// system's search path and the installation's settings (QORFMT_SITE, QORFMT_CONFIGURATION,
/// QORFMT_SEARCH_PATH). Throws InputError when the site (given or in QORFMT_SITE) is not a
/// directory or its settings or configuration cannot be used.
void applySiteOptions(const SiteOptions& options);

/// Whether a site is known: given as an option or in QORFMT_SITE.
bool siteKnown();

/// The documents the configurator lists for the site: every *.fordef file in a format_defs
/// directory along the search roots, in search order. Throws InputError as applySiteOptions does.
std::vector<boost::filesystem::path> siteDocuments();

/// The format_defs folders that siteDocuments looks in, in search order (those that do not exist
/// included).
std::vector<boost::filesystem::path> documentFolders();

/// The first file `name` in ROOT/`folder` along the search roots, or an empty path.
boost::filesystem::path findAlongSearchPath(const std::string& name, const std::string& folder);

/// The path as a user would type it here: relative to the current directory when it lies below
/// it, else unchanged.
std::string displayPath(const boost::filesystem::path& path);
/// The same, with the working directory given (for many paths; empty: it could not be found).
std::string displayPath(const boost::filesystem::path& path, const boost::filesystem::path& here);

/// The same file: both exist and resolve to one, or they are equal as written.
bool sameFile(const boost::filesystem::path& a, const boost::filesystem::path& b);

} // namespace QorfmtCli
