#include "cli/edits/handler_insertion.h"

#include "base/constants.h"
#include "cli/guards/range_guard.h"
#include "cli/output/terminal_text.h"
#include "workspace/characters.h"

#include <algorithm>

namespace lintara::cli {
namespace {

bool IsHandled(const std::optional<HandlerBlock>& block) {
    return block.has_value();
}

}  // namespace

std::expected<bool, Skip> HandlerInsertion::Apply(const EditTarget& target, const ProcedureGroup& group,
                                                  ComponentReport& report) {
    text_.Read(target.module, group);
    blocks_ = HandlerRemoval::FindBlocks(text_);
    auto objection = CheckBodies(target);
    if (!objection) {
        objection = CheckRanges(target, group, text_);
    }
    if (!objection) {
        objection = CheckCrowdedLines(target, text_, constants::NoErrorHandler);
    }
    if (objection) {
        return std::unexpected(*std::move(objection));
    }
    const bool all = std::ranges::all_of(blocks_, IsHandled);
    if (all && !refresh_.wanted) {
        return false;
    }
    writer_.Begin(target, group);
    std::optional<Skip> skip;
    if (refresh_.wanted && IsOutOfDate()) {
        skip = replacement_.Replace(target, group, text_, blocks_, report);
    } else if (all) {
        return false;
    } else {
        skip = CheckOthers(target, group);
        if (!skip) {
            skip = writer_.Write(target, group, text_, blocks_, std::vector<bool>(blocks_.size()), report);
        }
    }
    if (skip) {
        return std::unexpected(*std::move(skip));
    }
    return true;
}

bool HandlerInsertion::ApplyExactly(const EditTarget& target, const ProcedureGroup& group) {
    text_.Read(target.module, RangesToVisit(target.RangesOf(group)));
    RequireNoCrowdedLine(target, group, text_, constants::NoErrorHandler);
    const std::int32_t lines = target.module.CountOfLines();
    const Text& project = target.project.name();
    const Text& component = target.component.name;
    if (refresh_.wanted) {
        RequireNoCrowdedLine(target, group, text_, wanted_.label);
        settings_->SetLabel(wanted_.label);
        target.lintara.ErrorHandlerRemover(project, component, group.name);
    }
    target.lintara.ErrorHandlerInserter(project, component, group.name, wanted_.label, wanted_.code);
    return target.module.CountOfLines() != lines || text_.Differs(target.module);
}

bool HandlerInsertion::HasWork(const workspace::Module& module,
                               const workspace::ProcedureInfo& procedure) const {
    return procedure.body().count() > 0 && !removal_.HasWork(module, procedure);
}

bool HandlerInsertion::IsOutOfDate() const {
    for (std::size_t i = 0; i < blocks_.size(); ++i) {
        if (blocks_[i] &&
            FindHandlerChange(text_.body(text_.parts()[i]).subspan(blocks_[i]->begin), writer_.block())) {
            return true;
        }
    }
    return false;
}

std::optional<Skip> HandlerInsertion::CheckBodies(const EditTarget& target) const {
    for (std::size_t i = 0; i < blocks_.size(); ++i) {
        const ProcedureText::Part& part = text_.parts()[i];
        if (auto skip = CheckBodyEnd(target, text_, part,
                                     "the search for a handler would go on in later procedures")) {
            return skip;
        }
        if (blocks_[i] && !blocks_[i]->alone) {
            const Line line = part.body.begin + static_cast<std::int32_t>(blocks_[i]->begin);
            return Skip{SkipReason::MarkerMismatch, line,
                        target.Place(line) + " holds the text of a handler's marker, but begins no handler"};
        }
    }
    return std::nullopt;
}

// Removal takes one label for all procedures of a property.
std::optional<Skip> HandlerInsertion::CheckSameLabel(const EditTarget& target,
                                                     const ProcedureText::Part& part,
                                                     const HandlerBlock& block) const {
    if (block.label.empty() || workspace::SameName(block.label, wanted_.label)) {
        return std::nullopt;
    }
    const Line line = part.body.begin + static_cast<std::int32_t>(block.begin);
    const std::string label = Printable(block.label);
    return Skip{SkipReason::LabelMismatch, line,
                "the handler at " + target.Place(line) + " has the label " + label +
                    ", and all handlers of a property need one label; give --label " + label +
                    ", or replace that handler with --refresh"};
}

std::optional<Skip> HandlerInsertion::CheckOthers(const EditTarget& target,
                                                  const ProcedureGroup& group) const {
    auto skip = writer_.CheckCode(group);
    for (std::size_t i = 0; !skip && i < blocks_.size(); ++i) {
        const ProcedureText::Part& part = text_.parts()[i];
        if (blocks_[i]) {
            skip = CheckSameLabel(target, part, *blocks_[i]);
        } else {
            skip = writer_.CheckLabels(target, text_, part, std::nullopt);
        }
    }
    return skip;
}

}  // namespace lintara::cli
