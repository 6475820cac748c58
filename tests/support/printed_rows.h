// SPDX-License-Identifier: MIT
// Prints the rows of test tables by their values, so that a failed test names its row and not the bytes of its row.
//
//   struct ToneRow {
//       std::int32_t Hertz;
//       const char16_t* Name;
//   };
//   using support::PrintTo; // once in the namespace of the rows
//
// A row that should be printed in another way has a PrintTo of its own.
#pragma once

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <type_traits>
#include <utility>

namespace support {

namespace rows {

/// Converts to a member of any type, to count the members of a row.
struct AnyMember {
    template <class Member>
    operator Member() const;
};

template <class Row, std::size_t... Index>
constexpr bool TakesMembers(std::index_sequence<Index...>) {
    return requires {
        Row{(static_cast<void>(Index), AnyMember())...};
    };
}

template <class Row, std::size_t Most = 11>
constexpr std::size_t MemberCount() {
    if constexpr (Most == 0 || TakesMembers<Row>(std::make_index_sequence<Most>()))
        return Most;
    else
        return MemberCount<Row, Most - 1>();
}

/// Calls `use` with all members of a row.
template <class Row, class Use>
void WithMembers(const Row& row, const Use& use) {
    constexpr std::size_t Count = MemberCount<Row>();
    // clang-format off
    if constexpr (Count == 1) { const auto& [a] = row; use(a); }
    else if constexpr (Count == 2) { const auto& [a, b] = row; use(a, b); }
    else if constexpr (Count == 3) { const auto& [a, b, c] = row; use(a, b, c); }
    else if constexpr (Count == 4) { const auto& [a, b, c, d] = row; use(a, b, c, d); }
    else if constexpr (Count == 5) { const auto& [a, b, c, d, e] = row; use(a, b, c, d, e); }
    else if constexpr (Count == 6) { const auto& [a, b, c, d, e, f] = row; use(a, b, c, d, e, f); }
    else if constexpr (Count == 7) { const auto& [a, b, c, d, e, f, g] = row; use(a, b, c, d, e, f, g); }
    else if constexpr (Count == 8) { const auto& [a, b, c, d, e, f, g, h] = row; use(a, b, c, d, e, f, g, h); }
    else if constexpr (Count == 11) {
        const auto& [a, b, c, d, e, f, g, h, i, j, k] = row;
        use(a, b, c, d, e, f, g, h, i, j, k);
    }
    else static_assert(Count == 1, "a row of that many members needs a line here");
    // clang-format on
}

/// True for pointers, also those to routines and members. They are not printed, because an address means nothing in a
/// message; texts are handled before.
template <class Member>
constexpr bool IsPlace = std::is_pointer_v<Member> || std::is_member_pointer_v<Member>;

} // namespace rows

template <class Type>
concept Container = requires(const Type& type) {
    type.begin();
};
template <class Type>
concept Written = requires(const Type& type, std::ostream& out) {
    out << type;
};

/// A record of members that is not printed in another way.
template <class Type>
concept Row = std::is_class_v<Type> && std::is_aggregate_v<Type> && !Container<Type> && !Written<Type>;

template <Row Type>
void PrintTo(const Type& row, std::ostream* out);

template <class Member>
std::string Printed(const Member& member) {
    if constexpr (std::is_enum_v<Member>)
        return std::to_string(static_cast<std::int64_t>(member));
    else if constexpr (std::is_same_v<Member, const char*>)
        return member == nullptr ? "none" : testing::PrintToString(std::string(member));
    else if constexpr (std::is_same_v<Member, const char16_t*>)
        return member == nullptr ? "none" : testing::PrintToString(std::u16string(member));
    else if constexpr (rows::IsPlace<Member>)
        return "";
    else if constexpr (Row<Member>) {
        std::ostringstream text;
        PrintTo(member, &text);
        return text.str();
    } else
        return testing::PrintToString(member);
}

template <Row Type>
void PrintTo(const Type& row, std::ostream* out) {
    rows::WithMembers(row, [out](const auto&... members) {
        const char* between = "";
        for (const std::string& each : {Printed(members)...}) {
            if (each.empty())
                continue;
            *out << between << each;
            between = ", ";
        }
    });
}

} // namespace support
