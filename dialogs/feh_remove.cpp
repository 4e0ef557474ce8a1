#include "dialogs/feh_remove.h"

#include "base/constants.h"
#include "base/statement.h"
#include "dialogs/conventions.h"

#include <utility>

namespace lintara::dialogs {

using forms::Size;
using forms::Twips;

namespace {

constexpr Twips Margin = 90;
constexpr Size DesignSize{ScopePanelWidth + 2 * Margin, 1905};
constexpr Twips ButtonsLeft = (DesignSize.width - ButtonsSize.width) / 2;
constexpr Twips ButtonsTop = 1410;

}  // namespace

FEHRemove::FEHRemove(DialogHost host)
    : Form(u"FEHRemove", u"Remove error handlers/line numbers", DesignSize),
      DBPanel1(*this, u"DBPanel1", {Margin, 90, ScopePanelWidth, ScopePanelHeight}),
      Label1(DBPanel1, u"Label1", ScopeHeadingPlace, u"Remove from:"),
      optScope(MakeScopeOptions(DBPanel1)),
      DBPanel2(*this, u"DBPanel2", {Margin, 555, ScopePanelWidth, 750}),
      chkEH(DBPanel2, u"chkEH", {120, 90, 4500, 270}, u"Remove &error handlers"),
      chkLN(DBPanel2, u"chkLN", {120, 390, 4500, 270}, u"Remove line &numbers"),
      cmdStart(*this, u"cmdStart", ButtonPlace(0, ButtonsLeft, ButtonsTop), u"&Begin"),
      cmdCancel(*this, u"cmdCancel", ButtonPlace(1, ButtonsLeft, ButtonsTop), u"&Cancel"),
      Command1(*this, u"Command1", ButtonPlace(2, ButtonsLeft, ButtonsTop), u"&Help"),
      host_(std::move(host)) {
    resizable = false;
    minimum = DesignSize;
    optScope[0].SetValue(true);
    Attempt(chkEH.SetValue(forms::CheckBox::Checked));
    Attempt(chkLN.SetValue(forms::CheckBox::Checked));
    cmdStart.isDefault = true;
    cmdCancel.isCancel = true;
    Load.Handle([this] { Form_Load(); });
    Unloading.Handle([this] { Form_Unload(); });
    cmdStart.Click.Handle([this] { cmdStart_Click(); });
    cmdCancel.Click.Handle([this] { cmdCancel_Click(); });
    Command1.Click.Handle([this] { Command1_Click(); });
}

bool FEHRemove::GetRemoveEHParameters(RemoveEHParameters& parameters) {
    EnsureLoaded();
    OfferScopesAtCaret(optScope, parameters.iLenGetMemberName, parameters.iGetLineNumber);
    ShowModal(host_.toolkit);
    if (accepted_) {
        parameters.Scope = ChosenScope(optScope);
        parameters.RemoveEH = IsChecked(chkEH);
        parameters.RemoveLN = IsChecked(chkLN);
    }
    return accepted_;
}

void FEHRemove::Form_Load() {
    LoadWindowState(host_, *this);
    ReadBox(host_, constants::RemoveErrorHandlersKey, chkEH);
    ReadBox(host_, constants::RemoveLineNumbersKey, chkLN);
}

void FEHRemove::Form_Unload() {
    SaveWindowState(host_, *this);
}

void FEHRemove::cmdStart_Click() {
    accepted_ = true;
    Hide();
    host_.toolkit.DoEvents();
    SaveBox(host_, constants::RemoveErrorHandlersKey, chkEH);
    SaveBox(host_, constants::RemoveLineNumbersKey, chkLN);
}

void FEHRemove::cmdCancel_Click() {
    Hide();
    host_.toolkit.DoEvents();
}

void FEHRemove::Command1_Click() {
    ShowHelpTopic(host_, CommonDialog1, ErrorHandlerTopic);
}

}  // namespace lintara::dialogs
