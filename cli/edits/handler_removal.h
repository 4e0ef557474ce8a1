// Removal of error handlers that keeps only what does the code no harm.
#pragma once

#include "cli/edits/handler_block.h"
#include "cli/edits/handler_peers.h"
#include "cli/edits/label_settings.h"
#include "cli/edits/procedure_edit.h"
#include "cli/project/procedure_text.h"

#include <expected>
#include <memory>
#include <optional>
#include <span>
#include <unordered_set>
#include <vector>

namespace lintara::cli {

class HandlerRemoval : public ProcedureEdit {
  public:
    // `settings` are those that the library reads its label from. Removals from one project may share
    // `peers`.
    HandlerRemoval(WantedHandler wanted, std::shared_ptr<LabelSettings> settings,
                   std::shared_ptr<HandlerPeers> peers = std::make_shared<HandlerPeers>())
        : wanted_(std::move(wanted)), settings_(std::move(settings)), peers_(std::move(peers)) {}

    // A group without handlers is left alone and not looked at closer.
    [[nodiscard]] std::expected<bool, Skip> Apply(const EditTarget& target, const ProcedureGroup& group,
                                                  ComponentReport& report) override;
    [[nodiscard]] bool ApplyExactly(const EditTarget& target, const ProcedureGroup& group) override;
    [[nodiscard]] bool HasWork(const workspace::Module& module,
                               const workspace::ProcedureInfo& procedure) const override;
    [[nodiscard]] std::string_view fate() const override { return "keeps its error handler"; }

    // Blocks of the parts of `text`, none for a part without.
    using Blocks = std::vector<std::optional<HandlerBlock>>;
    [[nodiscard]] static Blocks FindBlocks(const ProcedureText& text);

    // What speaks against taking the handlers with that label out, for a group whose ranges were compared.
    // Jumps to `returning` do no harm: a handler with that label comes back.
    [[nodiscard]] static std::optional<Skip> Check(const EditTarget& target, const ProcedureText& text,
                                                   const Blocks& blocks, TextView label, TextView returning);
    // Takes them out. Throws Refusal when the outcome is another one than foreseen.
    void Remove(const EditTarget& target, const ProcedureGroup& group, const ProcedureText& text,
                const Blocks& blocks, TextView label) const;
    // What was typed into handlers that are to be taken out, as far as that can be told: those that are not
    // like other ones of the project.
    [[nodiscard]] std::vector<Remark> RemarksOnTyped(const EditTarget& target, const ProcedureGroup& group,
                                                     const ProcedureText& text, const Blocks& blocks);
    // Puts the blocks back into the bodies that they were taken from.
    static void PutBack(const EditTarget& target, const ProcedureText& text, const Blocks& blocks);

  private:
    // Whether exactly the blocks are gone. Puts the lines above them right.
    [[nodiscard]] static bool Settle(const EditTarget& target, const ProcedureGroup& group,
                                     const ProcedureText& text, const Blocks& blocks, TextView label);
    void RemarkEdited(const EditTarget& target, const ProcedureGroup& group, ComponentReport& report);

    WantedHandler wanted_;
    std::shared_ptr<LabelSettings> settings_;
    std::shared_ptr<HandlerPeers> peers_;
    std::unordered_set<const HandlerPeers::Shape*> told_;  // those that a remark was made on
    ProcedureText text_;
    Blocks blocks_;
};

}  // namespace lintara::cli
