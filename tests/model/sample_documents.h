#pragma once

#include "model/definition_document.h"

#include <boost/filesystem/path.hpp>
#include <boost/shared_ptr.hpp>

#include <string>

namespace ModelTest {

/// Text that exercises the format: markup characters, line breaks, blanks at both ends,
/// tabs, carriage returns, non-ASCII letters and bytes XML cannot carry.
std::string awkwardText(int variant);

/// A document in which every member of every class is set, most to unusual values: extreme and
/// special numbers, empty and awkward strings, lists of several entries in non-sorted order.
boost::shared_ptr<QorBorder::DefinitionDocument> makeFullDocument(const std::string& filename);

/// A small, plain document: one border with one size, one block with one field and one style.
boost::shared_ptr<QorBorder::DefinitionDocument> makeSmallDocument(const std::string& filename);

/// The small document saved as `folder`/`name`; returns the file.
boost::filesystem::path saveSmallDocument(const boost::filesystem::path& folder,
                                          const std::string& name);

} // namespace ModelTest
