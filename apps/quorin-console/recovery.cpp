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
    device.Serve();
    ExitStatus status = ExitStatus::Ended;
    for (const Drafts::Kept& draft : drafts.OfLastRuns()) {
        Text why;
        if (!drafts.IsUnsaved(draft, why))
            continue;
        Json object = {{"draft", ObjectOf(draft.Content)}};
        if (what == Recovery::Put) {
            why = why.empty() ? drafts.PutBack(draft) : why;
            object["put"] = why.empty();
            status = why.empty() ? status : ExitStatus::Failure;
        } else if (what == Recovery::Forget) {
            drafts.Forget(draft);
            object["forgotten"] = true;
        }
        if (!why.empty() && what != Recovery::Forget)
            object["error"] = Utf8(why);
        out.Write(object);
    }
    for (const Text& line : drafts.Unreadable()) {
        out.Write({{"unreadable", Utf8(line)}});
        status = ExitStatus::Failure;
    }
    return status;
}

} // namespace console
