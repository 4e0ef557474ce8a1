// The dialog "Insert custom code": which code to insert, where, and whether between marker lines by which it
// is found again. It lives for one question.
#pragma once

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
#include "forms/up_down.h"

#include <array>
#include <cstdint>

namespace lintara::dialogs {

class FCCInsert final : public forms::Form {
  public:
    // What `host` refers to outlives the form.
    explicit FCCInsert(DialogHost host);

    // Asks the user. True when the user confirmed; only then are the outputs written.
    [[nodiscard]] bool GetInsertCCParameters(InsertCCParameters& parameters);

    // Leaves a margin at both sides, and the status bar below it.
    forms::Frame fraBody;

    controls::DBPanel DBPanel1;
    forms::Label Label2;
    ScopeOptions optScope;

    controls::DBPanel DBPanel2;
    forms::Label Label4;
    std::array<forms::OptionButton, 3> optWhere;
    forms::Shape Shape1;
    forms::TextBox txtLine;
    forms::UpDown udLine;
    // Checked for marker lines, in spite of its name.
    forms::CheckBox chkNoDelimiters;
    forms::Label Label5;
    forms::Shape Shape2;
    forms::Label lblID;
    forms::TextBox txtID;
    forms::UpDown udID;

    controls::DBPanel DBPanel3;
    forms::Label Label3;
    forms::LineControl Line1;
    forms::TextBox txtCode;

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
    void DBPanel3_Resize();
    void txtCode_Change();
    void txtID_Change();
    void txtLine_Change();
    void txtCode_GotFocus();
    void txtID_GotFocus();
    void txtLine_GotFocus();
    void txtCode_KeyDown(std::int16_t keyCode, std::int16_t held);
    void chkNoDelimiters_Click();
    void optWhere_Click();
    void cmdStart_Click();
    void cmdCancel_Click();
    void Command1_Click();
    void UpdateBeginButton();
    [[nodiscard]] std::int16_t ChosenPlace() const;

    DialogHost host_;
    bool accepted_ = false;
    bool codeValid_ = false;
    bool idValid_ = false;
    bool lineValid_ = false;
    Text pasteBuffer_;
};

}  // namespace lintara::dialogs
