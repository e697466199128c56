#include "kivug/search_file_list.h"

#include <NXOpen/LoadOptions.hxx>
#include <NXOpen/PartCollection.hxx>
#include <NXOpen/Session.hxx>

namespace KivUg {

std::vector<boost::filesystem::path> nxSearchDirectories() {
    std::vector<NXOpen::NXString> directories;
    std::vector<bool> withSubDirectories;
    NXOpen::Session::GetSession()->Parts()->LoadOptions()->GetSearchDirectories(directories,
                                                                                withSubDirectories);
    std::vector<boost::filesystem::path> result;
    for (const NXOpen::NXString& directory : directories) {
        result.emplace_back(directory.GetText());
    }
    return result;
}

std::vector<boost::filesystem::path> searchRoots() {
    return searchRoots(nxSearchDirectories());
}

NxSearchFileList::NxSearchFileList(const boost::filesystem::path& relativeDirectory)
    : NxSearchFileList(relativeDirectory, searchRoots()) {}

boost::filesystem::path findFile(const std::string& name,
                                 const boost::filesystem::path& relativeDirectory, bool mustExist) {
    return findFile(name, relativeDirectory, mustExist, searchRoots());
}

} // namespace KivUg
