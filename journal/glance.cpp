// SPDX-License-Identifier: MIT
#include "journal/glance.h"

#include <cstdint>

namespace journal {

namespace {

/// Receives the parts of a line from the parser and keeps the texts of a Glance. All other values are only checked.
class Gatherer final : public nlohmann::json_sax<Line> {
public:
    explicit Gatherer(Glance& glance) : Glance_(glance) {}

    bool start_object(std::size_t) override {
        IsObject_ = IsObject_ || Depth_ == 0;
        return Enter();
    }
    bool start_array(std::size_t) override { return Depth_ != 0 && Enter(); }
    bool end_object() override { return Leave(); }
    bool end_array() override { return Leave(); }
    bool key(string_t& name) override {
        Wanted_ = Depth_ == 1 ? PlaceOf(name) : nullptr;
        return true;
    }
    bool string(string_t& text) override {
        if (Wanted_ != nullptr)
            Wanted_->assign(text);
        return Value();
    }
    bool null() override { return Value(); }
    bool boolean(bool) override { return Value(); }
    bool number_integer(number_integer_t) override { return Value(); }
    bool number_unsigned(number_unsigned_t) override { return Value(); }
    bool number_float(number_float_t, const string_t&) override { return Value(); }
    bool binary(binary_t&) override { return Value(); }
    bool parse_error(std::size_t, const std::string&, const nlohmann::detail::exception&) override { return false; }

private:
    bool Enter() {
        ++Depth_;
        Wanted_ = nullptr;
        return true;
    }
    bool Leave() {
        --Depth_;
        return true;
    }
    /// A value that is not in an object is the whole line.
    bool Value() const { return IsObject_; }
    std::string* PlaceOf(const std::string& name) {
        if (name == "event")
            return &Glance_.Event;
        if (name == "time")
            return &Glance_.Time;
        return name == "verdict" ? &Glance_.Verdict : nullptr;
    }

    Glance& Glance_;
    std::string* Wanted_ = nullptr; ///< where the text of the last name belongs; null if it is not kept
    int Depth_ = 0;
    bool IsObject_ = false;
};

} // namespace

bool LookAt(std::string_view line, Glance& glance) {
    glance.Event.clear();
    glance.Time.clear();
    glance.Verdict.clear();
    Gatherer gatherer(glance);
    return Line::sax_parse(line.begin(), line.end(), &gatherer);
}

bool Period::Has(std::string_view time) const {
    return time.substr(0, From.size()) >= From && (To.empty() || time.substr(0, To.size()) <= To);
}

std::string TextIn(const Line& line, const char* name) {
    const auto found = line.find(name);
    return found != line.end() && found->is_string() ? found->get<std::string>() : std::string();
}

std::int64_t NumberIn(const Line& line, const char* name) {
    const auto found = line.find(name);
    return found != line.end() && found->is_number() ? found->get<std::int64_t>() : 0;
}

} // namespace journal
