// The window of the navigation history: the places where the user has been in the code, in two lists, back
// and next. The user chooses one with a double click or the Enter key, or closes the window. It lives for one
// showing.
#pragma once

#include "controls/db_panel.h"
#include "forms/buttons.h"
#include "forms/form.h"
#include "forms/label.h"
#include "forms/toolkit.h"
#include "forms/tree_view.h"
#include "history/entry_format.h"
#include "hostmodel/globals.h"

#include <array>
#include <cstdint>

namespace lintara::history {

class FHistory final : public forms::Form {
  public:
    // The services object has the entries, and gets the choice. Both arguments outlive the form.
    FHistory(hostmodel::Globals& globals, forms::Toolkit& toolkit);

    controls::DBPanel DBPanel1;
    forms::TreeView tvwHistory;

    controls::DBPanel DBPanel2;
    forms::Label Label1;
    forms::CommandButton cmdClose;

  private:
    void HandleEvents();
    void Form_Load();
    void Form_Resize();
    void Form_Unload();
    void DBPanel1_Resize();
    void DBPanel2_Resize();
    void tvwHistory_DblClick();
    void tvwHistory_KeyPress(std::int16_t keyAscii);
    void cmdClose_Click();

    void ReadEntries();
    void FillTree();
    void AddEntry(std::size_t slot);
    void SelectCurrent();
    void ChooseSelected();

    hostmodel::Globals& globals_;
    forms::Toolkit& toolkit_;
    std::array<Text, SlotCount> entries_;
    Text separator_;
};

}  // namespace lintara::history
