#pragma once

#include "model/lint/lint.h"

#include <boost/filesystem/path.hpp>
#include <boost/shared_ptr.hpp>

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace QorLint {

/// A document held in memory that stands in for its file: an open document with unsaved changes.
struct OpenDocument {
    boost::filesystem::path file; ///< empty for a document never saved
    boost::shared_ptr<const QorBorder::DefinitionDocument> document;
};

/// Checks a document just saved as `qorfmt lint FILE` checks it in its site: the site's other
/// documents, in search order, resolve its references, each replaced by its open version when
/// that has unsaved changes. The site's documents are read once and kept while their files do
/// not change, so that a check after each save reads only what changed since; a template once
/// found is not looked for again.
class SiteCheck {
public:
    /// The findings in the document saved to `file` (named by its path as given). A site
    /// document that cannot be read gives no context and no finding here. Throws
    /// QorBorder::DocumentError when the saved file itself cannot be read back.
    std::vector<Finding> check(const boost::filesystem::path& file,
                               const boost::shared_ptr<const QorBorder::DefinitionDocument>& saved,
                               const std::vector<boost::filesystem::path>& siteDocuments,
                               const std::vector<OpenDocument>& openDocuments,
                               const TemplateLookup& templateFound);

private:
    struct Identity {
        std::uint64_t device = 0;
        std::uint64_t inode = 0;
        std::uint64_t size = 0;
        std::int64_t modifiedNs = 0;
        std::int64_t changedNs = 0;
        bool operator==(const Identity& other) const;
    };
    struct Cached {
        Identity identity;
        bool read = false;   ///< false: the file could not be read
        DocumentFacts facts; ///< all a check needs of the document, not the document
    };

    static Identity identityOf(const boost::filesystem::path& file);
    /// Reads the files not read yet, or changed since, as context (in parallel).
    void readChanged(const std::vector<boost::filesystem::path>& files);

    /// The file's path with links and dots resolved, worked out once per file.
    const boost::filesystem::path& normalised(const boost::filesystem::path& file);
    /// `lookup`, asked only for a template not found before.
    bool templateFoundBefore(const std::string& name, const std::string& folder,
                             const TemplateLookup& lookup);

    std::map<boost::filesystem::path, Cached> m_cache;
    std::map<boost::filesystem::path, boost::filesystem::path> m_normalised;
    std::set<std::pair<std::string, std::string>> m_templatesFound;
};

} // namespace QorLint
