#pragma once

#include "model/choice.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace QorBorder {

/// A field of a block layout or of a table row type.
class Field {
public:
    /// `isTableField` is true for the fields of a row type.
    explicit Field(bool tableField = false) : isTableField(tableField) {}
    Field(const Field&) = default;
    Field& operator=(const Field&) = default;
    ~Field() = default;

    std::string id;
    /// The `type` of a field whose value is chosen from its text choices.
    static constexpr std::int32_t kTextChoiceType = 1;

    std::int32_t type = 0; ///< 0 text, 1 text choice, 2 date, 3 no input, 4 and 5 from attribute
    bool isTableField;
    std::string secondLanguageFieldId; ///< empty for none
    bool collapseNoValue = false;
    std::string prefix;
    std::string suffix;
    std::int32_t broadcastType = 0;
    std::int32_t broadcastValueType = 0;
    std::string broadcastTitle;
    bool syncField = false;
    std::int32_t controlType = 0; ///< 0 to 9
    std::string defaultString;    ///< may hold several lines
    bool defaultToCurrentDate = false;
    std::int32_t defaultChoice = -1; ///< index into the text choices; may lie outside them
    std::string attrTitle;

    /// A copy of the text choices.
    std::vector<Choice> textChoices() const { return m_textChoices; }
    void setTextChoices(const std::vector<Choice>& choices) { m_textChoices = choices; }
    void setTextChoices(std::vector<Choice>&& choices) { m_textChoices = std::move(choices); }
    /// The text choices without a copy.
    const std::vector<Choice>& choices() const { return m_textChoices; }

    bool operator==(const Field& other) const;
    bool operator!=(const Field& other) const { return !(*this == other); }

private:
    std::vector<Choice> m_textChoices;
};

} // namespace QorBorder
