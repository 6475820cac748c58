// SPDX-License-Identifier: MIT
#include "apps/quorin-console/recovery.h"

namespace console {

using backends::Drafts;
using start::ExitStatus;

namespace {

Json ObjectOf(const companion::Draft& draft) {
    Json fields = Json::array();
    for (const companion::DraftField& field : FieldsOf(draft))
        fields.push_back({{"field", Utf8(field.Name)}, {"text", Utf8(field.Shown)}, {"saved", Utf8(field.Saved)}});
    return {{"time", Utf8(draft.Time)}, {"file", Utf8(draft.File)}, {"row", draft.Row}, {"fields", fields}};
}

} // namespace

ExitStatus Recover(Recovery what, Drafts& drafts, backends::BackEnd& device, Writer& out) {
    ExitStatus status = ExitStatus::Ended;
    for (const Drafts::Unsaved& draft : drafts.OfLastRuns(device)) {
        Json object = {{"draft", ObjectOf(draft.Content)}};
        Text why = draft.WhyNot;
        if (what == Recovery::Put && why.empty()) {
            why = drafts.PutBack(draft);
            object["put"] = why.empty();
        } else if (what == Recovery::Forget) {
            drafts.Forget(draft);
            object["forgotten"] = true;
        }
        if (!why.empty() && what != Recovery::Forget)
            object["error"] = Utf8(why);
        if (!why.empty() && what == Recovery::Put)
            status = ExitStatus::Failure;
        out.Write(object);
    }
    return status;
}

} // namespace console
