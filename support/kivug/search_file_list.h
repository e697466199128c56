#pragma once

#include "base/wildcard_filter.h"

#include <boost/filesystem/path.hpp>

#include <string>
#include <vector>

namespace KivUg {

// What asks NX (nxSearchDirectories, searchRoots() and the overloads without roots) is in the
// library qorkivug; the rest needs no NX and is in qorsupport.

/// The directories of NX's search path, in NX's order (its load options' search directories).
std::vector<boost::filesystem::path> nxSearchDirectories();

/// The roots searched for files, in order: `searchDirectories`, then the installation directory,
/// the common configuration's directory and the current configuration's directory (each joined
/// with the configuration sub-directory). Every root is absolute and appears once; empty entries
/// are dropped. Throws Kiv::ConfigurationError when the site or configuration settings are
/// malformed.
std::vector<boost::filesystem::path>
searchRoots(const std::vector<boost::filesystem::path>& searchDirectories);
/// The roots along NX's search path: searchRoots(nxSearchDirectories()).
std::vector<boost::filesystem::path> searchRoots();

/// The files below one relative directory (such as "format_defs") of every search root.
class NxSearchFileList {
public:
    /// Along NX's search path: the roots of searchRoots().
    explicit NxSearchFileList(const boost::filesystem::path& relativeDirectory);
    /// Along the given roots (a program that runs without NX gives them itself).
    NxSearchFileList(const boost::filesystem::path& relativeDirectory,
                     std::vector<boost::filesystem::path> roots);

    /// Every regular file matching `filter` in ROOT/relativeDirectory for each root, in root order
    /// and by name within a directory; a file reached twice (through a link or a repeated root) is
    /// listed once. Missing or unreadable directories are skipped.
    std::vector<boost::filesystem::path> filePaths(const Base::WildcardFilter& filter) const;
    /// The names (without directory) of filePaths(filter), each once and sorted by bytes: what a
    /// picker offers, where a name found in two roots stands for the first of them.
    std::vector<std::string> fileNames(const Base::WildcardFilter& filter) const;

private:
    boost::filesystem::path m_relativeDirectory;
    std::vector<boost::filesystem::path> m_roots;
};

/// The first file called `name` in ROOT/relativeDirectory along the search roots. When none is
/// found, returns an empty path, or throws std::runtime_error naming the file and the searched
/// directories if `mustExist` is true.
boost::filesystem::path findFile(const std::string& name,
                                 const boost::filesystem::path& relativeDirectory, bool mustExist);
/// As findFile, along the given roots.
boost::filesystem::path findFile(const std::string& name,
                                 const boost::filesystem::path& relativeDirectory, bool mustExist,
                                 const std::vector<boost::filesystem::path>& roots);

} // namespace KivUg
