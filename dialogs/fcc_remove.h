// The dialog "Remove custom code": the marked code of which number to remove, and where. It lives for one
// question.
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
#include "forms/text_box.h"
#include "forms/up_down.h"

namespace lintara::dialogs {

class FCCRemove final : public forms::Form {
  public:
    // What `host` refers to outlives the form.
    explicit FCCRemove(DialogHost host);

    // Asks the user. True when the user confirmed; only then are the outputs written.
    [[nodiscard]] bool GetRemoveCCParameters(RemoveCCParameters& parameters);

    controls::DBPanel DBPanel1;
    forms::Label Label1;
    ScopeOptions optScope;

    controls::DBPanel DBPanel2;
    forms::Label Label2;
    forms::Shape Shape2;
    forms::Label Label3;
    forms::TextBox txtID;
    forms::UpDown udID;

    forms::Frame Frame1;
    forms::CommandButton cmdStart;
    forms::CommandButton cmdCancel;
    forms::CommandButton Command1;
    CommonDialog CommonDialog1;

  private:
    void Form_Load();
    void Form_Unload();
    void txtID_Change();
    void txtID_GotFocus();
    void cmdStart_Click();
    void cmdCancel_Click();
    void Command1_Click();

    DialogHost host_;
    bool accepted_ = false;
};

}  // namespace lintara::dialogs
