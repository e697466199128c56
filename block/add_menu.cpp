#include "block/add_menu.h"

#include <algorithm>
#include <iterator>

namespace QorBorderConf {
namespace AddMenu {

std::vector<std::string> entries(std::vector<std::string> offered,
                                 std::vector<std::string> listed) {
    std::sort(offered.begin(), offered.end());
    std::sort(listed.begin(), listed.end());
    std::vector<std::string> addable;
    std::set_difference(offered.begin(), offered.end(), listed.begin(), listed.end(),
                        std::back_inserter(addable));
    if (addable.empty()) {
        addable.push_back(kNone);
    }
    return addable;
}

bool offersAnId(const std::vector<std::string>& menuItems) {
    return !(menuItems.size() == 1 && menuItems.front() == kNone);
}

} // namespace AddMenu
} // namespace QorBorderConf
