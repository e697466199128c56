#pragma once

#include "model/row_type.h"

#include <boost/shared_ptr.hpp>

#include <vector>

namespace QorBorder {

/// The optional table of a block layout: its row types. Copies are deep.
class Table {
public:
    Table() = default;
    Table(const Table& other);
    Table& operator=(const Table& other);
    Table(Table&&) = default;
    Table& operator=(Table&&) = default;
    ~Table() = default;

    bool rowsCreated = false;

    std::vector<boost::shared_ptr<const RowType>> rowTypes() const;
    void addRowType(const boost::shared_ptr<RowType>& rowType);
    /// The table's own row type, or an empty pointer when `index` is outside the list.
    boost::shared_ptr<RowType> getRowType(int index);
    /// Throws std::out_of_range.
    void deleteRowType(int index);
    std::size_t rowTypeCount() const { return m_rowTypes.size(); }

    bool operator==(const Table& other) const;
    bool operator!=(const Table& other) const { return !(*this == other); }

private:
    std::vector<boost::shared_ptr<RowType>> m_rowTypes;
};

} // namespace QorBorder
