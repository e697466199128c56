#pragma once

#include "testutil/temp_dir.h"

#include <boost/filesystem/path.hpp>

#include <string>

namespace TestUtil {

/// A fresh site for the workspace tests: the installation folder with two documents, a common
/// configuration and a current configuration ("plant") with one document each, kept beside the
/// site as the example site keeps them. Sets QORFMT_SITE, QORFMT_CONFIGURATION and
/// QORFMT_SEARCH_PATH for its lifetime.
///
/// site/format_defs/docA.fordef: borders A3, A4; blocks TB, PL; locations of TB: L1 (any style),
///   L2 (style S1), L3 (any style); of PL: P1; translations DE_TB_TITLE_Drawing = "Zeichnung",
///   FR_TB_TITLE_Drawing = "Dessin".
/// site/format_defs/docB.fordef: border B1; block RB; translation DE_TB_TITLE_Drawing =
///   "Zeichnung B".
/// configurations/common/nx/format_defs/company.fordef: block LOGO.
/// configurations/plant/nx/format_defs/plant.fordef: block REV.
class WorkspaceSite {
public:
    /// `withCommon` false leaves the plant configuration without a common configuration.
    explicit WorkspaceSite(bool withCommon = true);

    const boost::filesystem::path& root() const { return m_dir.path(); }
    boost::filesystem::path site() const { return m_dir.path() / "site"; }
    boost::filesystem::path document(const std::string& name) const {
        return site() / "format_defs" / name;
    }
    const TempDir& dir() const { return m_dir; }
    ScopedEnvironment& environment() { return m_env; }

private:
    TempDir m_dir;
    ScopedEnvironment m_env;
};

} // namespace TestUtil
