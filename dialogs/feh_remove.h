// The dialog "Remove error handlers/line numbers": what to remove, and where. It lives for one question.
#pragma once

#include "controls/db_panel.h"
#include "dialogs/common_dialog.h"
#include "dialogs/dialog_host.h"
#include "dialogs/parameters.h"
#include "dialogs/scope_options.h"
#include "forms/buttons.h"
#include "forms/form.h"
#include "forms/label.h"

namespace lintara::dialogs {

class FEHRemove final : public forms::Form {
  public:
    // What `host` refers to outlives the form.
    explicit FEHRemove(DialogHost host);

    // Asks the user. True when the user confirmed, maybe that nothing is to be removed; only then are the
    // outputs written.
    [[nodiscard]] bool GetRemoveEHParameters(RemoveEHParameters& parameters);

    controls::DBPanel DBPanel1;
    forms::Label Label1;
    ScopeOptions optScope;

    controls::DBPanel DBPanel2;
    forms::CheckBox chkEH;
    forms::CheckBox chkLN;

    forms::CommandButton cmdStart;
    forms::CommandButton cmdCancel;
    forms::CommandButton Command1;
    CommonDialog CommonDialog1;

  private:
    void Form_Load();
    void Form_Unload();
    void cmdStart_Click();
    void cmdCancel_Click();
    void Command1_Click();

    DialogHost host_;
    bool accepted_ = false;
};

}  // namespace lintara::dialogs
