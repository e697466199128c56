#include "model/table.h"

#include "model/list_util.h"

namespace QorBorder {

Table::Table(const Table& other)
    : rowsCreated(other.rowsCreated), m_rowTypes(ListUtil::deepCopy(other.m_rowTypes)) {}

// A deep copy, then a move: the member list lives in the copy constructor only.
Table& Table::operator=(const Table& other) {
    if (this != &other) {
        *this = Table(other);
    }
    return *this;
}

std::vector<boost::shared_ptr<const RowType>> Table::rowTypes() const {
    return ListUtil::constView(m_rowTypes);
}

void Table::addRowType(const boost::shared_ptr<RowType>& rowType) {
    m_rowTypes.push_back(rowType);
}

boost::shared_ptr<RowType> Table::getRowType(int index) {
    return ListUtil::at(m_rowTypes, index);
}

void Table::deleteRowType(int index) {
    ListUtil::erase(m_rowTypes, index, "deleteRowType");
}

bool Table::operator==(const Table& other) const {
    return rowsCreated == other.rowsCreated && ListUtil::deepEqual(m_rowTypes, other.m_rowTypes);
}

} // namespace QorBorder
