#pragma once

#include "model/lint/site_check.h"

#include <boost/shared_ptr.hpp>

#include <vector>

namespace QorBorder {
class DefinitionDocument;
}

namespace QorBorderConf {

/// After a save, what the site's checker finds in each saved document, in NX's listing window:
/// the saves themselves stay as they are, and nothing modal is added to them. A document without
/// findings writes nothing.
class SaveReport {
public:
    /// Checks `saved` (documents just saved to their files) in the context of the site's other
    /// documents, each as the document manager holds it when it has unsaved changes there. A
    /// new document that was never saved is no part of the site yet, and gives no context.
    void report(const std::vector<boost::shared_ptr<QorBorder::DefinitionDocument>>& saved);

private:
    QorLint::SiteCheck m_check;
};

} // namespace QorBorderConf
