#include "cli/checks/handler_check.h"

namespace lintara::cli {

std::expected<bool, Skip> HandlerCheck::Apply(const EditTarget& target, const ProcedureGroup& group,
                                              ComponentReport& report) {
    if (auto skip = CheckRanges(target, group)) {
        return std::unexpected(*std::move(skip));
    }
    const HandlerFinding state = StateOfHandler(target, group, wanted_);
    if (state.state == HandlerState::UpToDate) {
        return false;
    }
    const bool missing = state.state == HandlerState::None;
    const Line at = target.Input(missing ? group.reached.front().header : state.at);
    const auto inserted = insertion_.Apply(target, group, report);
    if (!inserted || !*inserted) {
        return inserted;
    }
    Find(group, missing ? "no-handler" : "stale-handler", at,
         missing ? "has no error handler" : "its error handler is out of date: " + state.why);
    return false;
}

std::expected<bool, Skip> HandlerAbsenceCheck::Apply(const EditTarget& target, const ProcedureGroup& group,
                                                     ComponentReport&) {
    text_.Read(target.module, group);
    const HandlerRemoval::Blocks blocks = HandlerRemoval::FindBlocks(text_);
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        if (blocks[i]) {
            const Line at = text_.parts()[i].body.begin + static_cast<std::int32_t>(blocks[i]->begin);
            Find(group.reached[i], "handler-present", target.Input(at), "has an error handler");
        }
    }
    return false;
}

bool HandlerAbsenceCheck::HasWork(const workspace::Module& module,
                                  const workspace::ProcedureInfo& procedure) const {
    ProcedureText text;
    const LineRange body = procedure.body();
    text.Read(module, std::span(&body, 1));
    return FindHandlerBlock(text.body(text.parts().front())).has_value();
}

}  // namespace lintara::cli
