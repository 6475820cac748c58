// SPDX-License-Identifier: MIT
#include "src/blob/targets.h"

#include "src/view/platform/platform.h"

#include <algorithm>
#include <limits>

namespace modBLob {

using modQuorin::InfField;
using modStringTools::SameIgnoringCase;

std::int16_t RowNumber(std::int64_t row) {
    if (row > std::numeric_limits<std::int16_t>::max())
        platform::RuntimeFailure(u"A result belongs to row " + modStringTools::NumberText(row) +
                                 u" of the record, which is above 32767");
    return static_cast<std::int16_t>(row);
}

Target FindTarget(const std::vector<InfField>& fields, const std::vector<Text>& types) {
    Target target;
    for (const Text& type : types) {
        const auto field = std::find_if(fields.begin(), fields.end(),
                                        [&type](const InfField& each) { return SameIgnoringCase(each.Blob, type); });
        if (field != fields.end()) {
            target.Row = RowNumber(field - fields.begin());
            target.MatchedType = type;
        }
    }
    return target;
}

std::optional<std::int32_t> FindVariableRow(const std::vector<InfField>& fields, const Text& name,
                                            const Text& matchedType) {
    const Text plain = VariableMark + name;
    const Text tied = VariableMark + u"{" + matchedType + u"}" + name;
    std::optional<std::int32_t> found;
    std::int32_t row = 0;
    for (const InfField& field : fields) {
        if (SameIgnoringCase(field.Blob, tied))
            return row;
        if (SameIgnoringCase(field.Blob, plain))
            found = row;
        ++row;
    }
    return found;
}

NameAndValue SplitVariable(const Text& variable) {
    const std::size_t equals = std::min(variable.find(u'='), variable.size());
    return {variable.substr(0, equals), variable.substr(std::min(equals + 1, variable.size()))};
}

} // namespace modBLob
