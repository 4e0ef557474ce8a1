#include "dialogs/feh_insert.h"

#include "base/constants.h"
#include "base/numbers.h"
#include "base/statement.h"
#include "dialogs/conventions.h"

#include <utility>

namespace lintara::dialogs {

using forms::Color;
using forms::Rect;
using forms::Size;
using forms::Twips;

namespace {

// Wide and high enough for the built-in code.
constexpr Size DesignSize{9240, 6660};
constexpr Twips SideMargin = 60;
constexpr Twips PanelWidth = DesignSize.width - 180;
constexpr Twips HandlerPanelHeight = DesignSize.height - 2490;
constexpr Twips NumberPanelTop = DesignSize.height - 1875;
constexpr Twips NumberPanelHeight = 930;

constexpr Rect BodyPlace{SideMargin, 0, DesignSize.width - 2 * SideMargin,
                         DesignSize.height - StatusBarHeight};
constexpr Rect ButtonsPlace{(DesignSize.width - ButtonsSize.width - 120) / 2,
                            NumberPanelTop + NumberPanelHeight + 105, ButtonsSize.width, ButtonsSize.height};
constexpr Rect StatusBarPlace{0, DesignSize.height - StatusBarHeight, DesignSize.width, StatusBarHeight};

}  // namespace

FEHInsert::FEHInsert(DialogHost host)
    : Form(u"FEHInsert", u"Insert error handlers/line numbers", DesignSize),
      fraBody(*this, u"fraBody", BodyPlace),
      DBPanel1(fraBody, u"DBPanel1", {30, 90, PanelWidth, ScopePanelHeight}),
      Label1(DBPanel1, u"Label1", ScopeHeadingPlace, u"Insert in:"),
      optScope(MakeScopeOptions(DBPanel1)),
      DBPanel2(fraBody, u"DBPanel2", {30, 555, PanelWidth, HandlerPanelHeight}),
      chkEH(DBPanel2, u"chkEH", {120, 90, 4500, 270}, u"Insert &error handlers"),
      oEHInsert(DBPanel2, u"oEHInsert", {15, 450, PanelWidth - 30, HandlerPanelHeight - 465}, host.settings,
                host.toolkit),
      DBPanel3(fraBody, u"DBPanel3", {30, NumberPanelTop, PanelWidth, NumberPanelHeight}),
      chkLN(DBPanel3, u"chkLN", {120, 90, 4500, 270}, u"Insert line &numbers"),
      Shape1(DBPanel3, u"Shape1", {1425, 465, 1500, 345}, Color::ButtonShadow),
      lblEHBase(DBPanel3, u"lblEHBase", {120, 525, 1260, 240}, u"B&ase number:"),
      txtEHBase(DBPanel3, u"txtEHBase", {1470, 525, 1410, 240}, constants::DefaultLineNumberBase),
      Shape2(DBPanel3, u"Shape2", {3960, 465, 1500, 345}, Color::ButtonShadow),
      lblEHStep(DBPanel3, u"lblEHStep", {3240, 525, 675, 240}, u"&Step:"),
      txtEHStep(DBPanel3, u"txtEHStep", {4005, 525, 1410, 240}, u""),
      Frame1(fraBody, u"Frame1", ButtonsPlace),
      cmdStart(Frame1, u"cmdStart", ButtonPlace(0), u"&Begin"),
      cmdCancel(Frame1, u"cmdCancel", ButtonPlace(1), u"&Cancel"),
      Command1(Frame1, u"Command1", ButtonPlace(2), u"&Help"),
      StatusBar1(*this, u"StatusBar1", StatusBarPlace),
      host_(std::move(host)) {
    minimum = {ScopePanelWidth + 180, 4560};
    optScope[0].SetValue(true);
    Attempt(chkEH.SetValue(forms::CheckBox::Checked));
    Attempt(chkLN.SetValue(forms::CheckBox::Checked));
    txtEHBase.bordered = false;
    txtEHStep.bordered = false;
    cmdStart.isDefault = true;
    cmdCancel.isCancel = true;
    HandleEvents();
}

void FEHInsert::HandleEvents() {
    Load.Handle([this] { Form_Load(); });
    Resize.Handle([this] { Form_Resize(); });
    Unloading.Handle([this] { Form_Unload(); });
    chkEH.Click.Handle([this] { chkEH_Click(); });
    chkLN.Click.Handle([this] { chkLN_Click(); });
    txtEHBase.Change.Handle([this] { txtEHBase_Change(); });
    txtEHStep.Change.Handle([this] { txtEHStep_Change(); });
    txtEHBase.GotFocus.Handle([this] { txtEHBase_GotFocus(); });
    txtEHStep.GotFocus.Handle([this] { txtEHStep_GotFocus(); });
    oEHInsert.IsValid.Handle([this](bool) { oEHInsert_IsValid(); });
    DBPanel2.Resize.Handle([this] { DBPanel2_Resize(); });
    cmdStart.Click.Handle([this] { cmdStart_Click(); });
    cmdCancel.Click.Handle([this] { cmdCancel_Click(); });
    Command1.Click.Handle([this] { Command1_Click(); });
}

bool FEHInsert::GetInsertEHParameters(InsertEHParameters& parameters) {
    EnsureLoaded();
    OfferScopesAtCaret(optScope, parameters.iLenGetMemberName, parameters.iGetLineNumber);
    oEHInsert.sCCPBuffer = parameters.sCCPBuffer;
    ShowModal(host_.toolkit);
    if (accepted_) {
        parameters.Scope = ChosenScope(optScope);
        parameters.InsertEH = IsChecked(chkEH);
        parameters.InsertLN = IsChecked(chkLN);
        if (parameters.InsertEH) {
            parameters.EHLabel = oEHInsert.EHLabel();
            parameters.EHCode = oEHInsert.EHCode();
            parameters.sCCPBuffer = oEHInsert.sCCPBuffer;
        }
        if (parameters.InsertLN) {
            parameters.LNBase = txtEHBase.Contents();
            parameters.LNStep = txtEHStep.Contents();
        }
    }
    return accepted_;
}

void FEHInsert::Form_Load() {
    LoadWindowState(host_, *this);
    ReadBox(host_, constants::InsertLineNumbersKey, chkLN);
    ReadBox(host_, constants::InsertErrorHandlersKey, chkEH);
    chkEH_Click();
    chkLN_Click();
    txtEHBase.SetContents(ReadText(host_, constants::LineNumberBaseKey));
    txtEHStep.SetContents(ReadText(host_, constants::LineNumberStepKey));
}

// What does not fit a small form keeps its place.
void FEHInsert::Form_Resize() {
    const Twips w = ScaleWidth();
    const Twips h = ScaleHeight();
    Attempt(fraBody.Move({SideMargin, 0, w - 2 * SideMargin, h - StatusBarHeight}));
    Attempt(DBPanel1.SetWidth(w - 180));
    Attempt(DBPanel2.Move({30, 555, DBPanel1.Width(), h - 2490}));
    Attempt(
        DBPanel3.Move({30, DBPanel2.Top() + DBPanel2.Height() + 60, DBPanel1.Width(), DBPanel3.Height()}));
    Attempt(Frame1.Move({(w - Frame1.Width() - 120) / 2, DBPanel3.Top() + DBPanel3.Height() + 105,
                         Frame1.Width(), Frame1.Height()}));
}

void FEHInsert::Form_Unload() {
    SaveWindowState(host_, *this);
}

void FEHInsert::chkEH_Click() {
    oEHInsert.SetState(IsChecked(chkEH));
    UpdateBeginButton();
}

void FEHInsert::chkLN_Click() {
    const bool enabled = IsChecked(chkLN);
    lblEHBase.SetEnabled(enabled);
    txtEHBase.SetEnabled(enabled);
    lblEHStep.SetEnabled(enabled);
    txtEHStep.SetEnabled(enabled);
    UpdateBeginButton();
}

void FEHInsert::txtEHBase_Change() {
    UpdateBeginButton();
}

void FEHInsert::txtEHStep_Change() {
    UpdateBeginButton();
}

void FEHInsert::txtEHBase_GotFocus() {
    txtEHBase.SelectAll();
}

void FEHInsert::txtEHStep_GotFocus() {
    txtEHStep.SelectAll();
}

void FEHInsert::oEHInsert_IsValid() {
    UpdateBeginButton();
}

void FEHInsert::DBPanel2_Resize() {
    const Twips w = DBPanel2.Width();
    const Twips h = DBPanel2.Height();
    if (w > 30 && h > 465) {
        Attempt(oEHInsert.Move({15, 450, w - 30, h - 465}));
    }
}

void FEHInsert::cmdStart_Click() {
    accepted_ = true;
    Hide();
    host_.toolkit.DoEvents();
    SaveBox(host_, constants::InsertLineNumbersKey, chkLN);
    SaveBox(host_, constants::InsertErrorHandlersKey, chkEH);
    SaveText(host_, constants::LineNumberBaseKey, txtEHBase.Contents());
    SaveText(host_, constants::LineNumberStepKey, txtEHStep.Contents());
    SaveText(host_, constants::ErrorHandlerLabelKey, oEHInsert.EHLabel());
    SaveText(host_, constants::ErrorHandlerCodeKey, oEHInsert.EHCode());
}

void FEHInsert::cmdCancel_Click() {
    Hide();
    host_.toolkit.DoEvents();
}

void FEHInsert::Command1_Click() {
    ShowHelpTopic(host_, CommonDialog1, ErrorHandlerTopic);
}

// The user can begin when something is to be inserted and nothing speaks against it.
void FEHInsert::UpdateBeginButton() {
    TextView complaint;
    if (!IsChecked(chkEH) && !IsChecked(chkLN)) {
        complaint = u"Choose what to insert: error handlers, line numbers or both.";
    }
    if (complaint.empty() && IsChecked(chkEH)) {
        complaint = HandlerComplaint();
    }
    if (complaint.empty() && IsChecked(chkLN)) {
        complaint = LineNumberComplaint();
    }
    cmdStart.SetEnabled(complaint.empty());
    StatusBar1.SetSimpleText(complaint);
}

TextView FEHInsert::HandlerComplaint() const {
    if (oEHInsert.EHLabel().empty()) {
        return u"Enter the error handler's label.";
    }
    return oEHInsert.EHCode().empty() ? u"Enter the error handler's code." : u"";
}

TextView FEHInsert::LineNumberComplaint() const {
    if (txtEHBase.Contents().empty()) {
        return u"Enter the base number, which the first line gets.";
    }
    if (!IsNumeric(txtEHBase.Contents())) {
        return u"The base number is not a number.";
    }
    if (txtEHStep.Contents().empty()) {
        return u"Enter the step from one line number to the next.";
    }
    return IsNumeric(txtEHStep.Contents()) ? u"" : u"The step is not a number.";
}

}  // namespace lintara::dialogs
