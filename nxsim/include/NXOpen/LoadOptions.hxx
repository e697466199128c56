#pragma once
// Stand-in for the NX Open SDK header of the same name; it declares only what the program calls.

#include <NXOpen/NXString.hxx>

#include <vector>

namespace NXOpen {

/// How the session loads parts; the stand-in has only the search directories.
class LoadOptions {
public:
    /// The directories searched for parts, in order, and for each whether its sub-directories
    /// are searched too. The stand-in's are the search path its host was given
    /// (QORFMT_SEARCH_PATH, separated by ':' like PATH; empty entries dropped), none with
    /// sub-directories.
    void GetSearchDirectories(std::vector<NXString>& searchDirectories,
                              std::vector<bool>& searchSubDirs);
};

} // namespace NXOpen
