// The dialog "Insert error handlers/line numbers": what to insert, where, and with which numbers, label and
// code. It lives for one question.
#pragma once

#include "controls/ctl_eh_insert.h"
#include "controls/db_panel.h"
#include "dialogs/common_dialog.h"
#include "dialogs/dialog_host.h"
#include "dialogs/parameters.h"
#include "dialogs/scope_options.h"
#include "forms/buttons.h"
#include "forms/container.h"
#include "forms/drawing.h"
#include "forms/form.h"
#include "forms/label.h"
#include "forms/status_bar.h"
#include "forms/text_box.h"

namespace lintara::dialogs {

class FEHInsert final : public forms::Form {
  public:
    // What `host` refers to outlives the form.
    explicit FEHInsert(DialogHost host);

    // Asks the user. True when the user confirmed; only then are the outputs written.
    [[nodiscard]] bool GetInsertEHParameters(InsertEHParameters& parameters);

    // Leaves a margin at both sides, and the status bar below it.
    forms::Frame fraBody;

    controls::DBPanel DBPanel1;
    forms::Label Label1;
    ScopeOptions optScope;

    controls::DBPanel DBPanel2;
    forms::CheckBox chkEH;
    controls::CtlEHInsert oEHInsert;

    controls::DBPanel DBPanel3;
    forms::CheckBox chkLN;
    forms::Shape Shape1;
    forms::Label lblEHBase;
    forms::TextBox txtEHBase;
    forms::Shape Shape2;
    forms::Label lblEHStep;
    forms::TextBox txtEHStep;

    forms::Frame Frame1;
    forms::CommandButton cmdStart;
    forms::CommandButton cmdCancel;
    forms::CommandButton Command1;

    // Says why the user cannot begin; empty when that is possible.
    forms::StatusBar StatusBar1;
    CommonDialog CommonDialog1;

  private:
    void HandleEvents();
    void Form_Load();
    void Form_Resize();
    void Form_Unload();
    void chkEH_Click();
    void chkLN_Click();
    void txtEHBase_Change();
    void txtEHStep_Change();
    void txtEHBase_GotFocus();
    void txtEHStep_GotFocus();
    void oEHInsert_IsValid();
    void DBPanel2_Resize();
    void cmdStart_Click();
    void cmdCancel_Click();
    void Command1_Click();
    void UpdateBeginButton();
    [[nodiscard]] TextView HandlerComplaint() const;
    [[nodiscard]] TextView LineNumberComplaint() const;

    DialogHost host_;
    bool accepted_ = false;
};

}  // namespace lintara::dialogs
