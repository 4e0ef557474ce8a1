#include "dialogs/fcc_insert.h"

#include "base/constants.h"
#include "base/numbers.h"
#include "base/statement.h"
#include "controls/buffer_keys.h"
#include "dialogs/conventions.h"

#include <utility>

namespace lintara::dialogs {

using forms::Color;
using forms::Rect;
using forms::Size;
using forms::Twips;
using forms::UpDown;

namespace {

constexpr Size DesignSize{8400, 6300};
constexpr Twips SideMargin = 60;
constexpr Twips PanelWidth = DesignSize.width - 180;
constexpr Twips CodePanelTop = 2655;
constexpr Twips CodePanelHeight = DesignSize.height - 3630;

constexpr Rect BodyPlace{SideMargin, 0, DesignSize.width - 2 * SideMargin,
                         DesignSize.height - StatusBarHeight};
constexpr Rect ButtonsPlace{(DesignSize.width - ButtonsSize.width - 120) / 2,
                            CodePanelTop + CodePanelHeight + 105, ButtonsSize.width, ButtonsSize.height};
constexpr Rect StatusBarPlace{0, DesignSize.height - StatusBarHeight, DesignSize.width, StatusBarHeight};

constexpr UpDown::Range Numbers{.min = 1, .max = 10000};
constexpr TextView SampleCode = u"Debug.Print Time & \" - {ComponentName}.{MemberName}\"\r\n";

bool IsNumber(const forms::TextBox& box) {
    return !box.Contents().empty() && IsNumeric(box.Contents());
}

}  // namespace

FCCInsert::FCCInsert(DialogHost host)
    : Form(u"FCCInsert", u"Insert custom code", DesignSize),
      fraBody(*this, u"fraBody", BodyPlace),
      DBPanel1(fraBody, u"DBPanel1", {30, 90, PanelWidth, ScopePanelHeight}),
      Label2(DBPanel1, u"Label2", ScopeHeadingPlace, u"Insert in:"),
      optScope(MakeScopeOptions(DBPanel1)),
      DBPanel2(fraBody, u"DBPanel2", {30, 555, PanelWidth, 2040}),
      Label4(DBPanel2, u"Label4", {120, 90, 3000, 225}, u"I&nsertion point:"),
      optWhere{
          {{DBPanel2, u"optWhere(0)", {120, 345, 6000, 255}, u"Insert immediatelly after the first line"},
           {DBPanel2, u"optWhere(1)", {120, 645, 6000, 255}, u"Insert immediatelly before the last line"},
           {DBPanel2, u"optWhere(2)", {120, 960, 2160, 255}, u"Insert at line:"}}},
      Shape1(DBPanel2, u"Shape1", {2310, 915, 1290, 345}, Color::ButtonShadow),
      txtLine(DBPanel2, u"txtLine", {2355, 975, 960, 240}, u"1"),
      udLine(DBPanel2, u"udLine", {3330, 945, 240, 285}, txtLine, Numbers),
      chkNoDelimiters(DBPanel2, u"chkNoDelimiters", {120, 1320, 2160, 255}, u"Use &markup lines"),
      Label5(DBPanel2, u"Label5", {2310, 1335, 5100, 225},
             u"(check it to insure future automatically removal)"),
      Shape2(DBPanel2, u"Shape2", {2310, 1620, 1290, 345}, Color::ButtonShadow),
      lblID(DBPanel2, u"lblID", {390, 1680, 1890, 225}, u"Numeric ID to be used:"),
      txtID(DBPanel2, u"txtID", {2355, 1680, 960, 240}, u"1"),
      udID(DBPanel2, u"udID", {3330, 1650, 240, 285}, txtID, Numbers),
      DBPanel3(fraBody, u"DBPanel3", {30, CodePanelTop, PanelWidth, CodePanelHeight}),
      Label3(DBPanel3, u"Label3", {120, 105, 3000, 225}, u"Co&de to insert:"),
      Line1(DBPanel3, u"Line1", {15, 390, PanelWidth - 15, 390}, Color::ButtonShadow),
      txtCode(DBPanel3, u"txtCode", {15, 405, PanelWidth - 30, CodePanelHeight - 420}, SampleCode,
              forms::TextBox::Lines::Many),
      Frame1(fraBody, u"Frame1", ButtonsPlace),
      cmdStart(Frame1, u"cmdStart", ButtonPlace(0), u"&Begin"),
      cmdCancel(Frame1, u"cmdCancel", ButtonPlace(1), u"&Cancel"),
      Command1(Frame1, u"Command1", ButtonPlace(2), u"&Help"),
      StatusBar1(*this, u"StatusBar1", StatusBarPlace),
      host_(std::move(host)) {
    minimum = {ScopePanelWidth + 180, 4800};
    optWhere[0].SetValue(true);
    txtLine.SetEnabled(false);
    udLine.SetEnabled(false);
    Attempt(chkNoDelimiters.SetValue(forms::CheckBox::Checked));
    txtLine.bordered = false;
    txtLine.description = u"Line within the procedure";
    txtID.bordered = false;
    txtCode.font = {.name = u"Courier New", .points = 9};
    cmdStart.isDefault = true;
    cmdCancel.isCancel = true;
    HandleEvents();
}

void FCCInsert::HandleEvents() {
    Load.Handle([this] { Form_Load(); });
    Resize.Handle([this] { Form_Resize(); });
    Unloading.Handle([this] { Form_Unload(); });
    DBPanel3.Resize.Handle([this] { DBPanel3_Resize(); });
    txtCode.Change.Handle([this] { txtCode_Change(); });
    txtID.Change.Handle([this] { txtID_Change(); });
    txtLine.Change.Handle([this] { txtLine_Change(); });
    txtCode.GotFocus.Handle([this] { txtCode_GotFocus(); });
    txtID.GotFocus.Handle([this] { txtID_GotFocus(); });
    txtLine.GotFocus.Handle([this] { txtLine_GotFocus(); });
    txtCode.KeyDown.Handle(
        [this](std::int16_t keyCode, std::int16_t held) { txtCode_KeyDown(keyCode, held); });
    chkNoDelimiters.Click.Handle([this] { chkNoDelimiters_Click(); });
    for (forms::OptionButton& option : optWhere) {
        option.Click.Handle([this] { optWhere_Click(); });
    }
    cmdStart.Click.Handle([this] { cmdStart_Click(); });
    cmdCancel.Click.Handle([this] { cmdCancel_Click(); });
    Command1.Click.Handle([this] { Command1_Click(); });
}

bool FCCInsert::GetInsertCCParameters(InsertCCParameters& parameters) {
    EnsureLoaded();
    if (!parameters.TextToInsert.empty()) {
        txtCode.SetContents(parameters.TextToInsert);
    }
    OfferScopes(optScope, parameters.ProcAvailable, parameters.ComponentAvailable);
    ShowModal(host_.toolkit);
    if (accepted_) {
        parameters.Scope = ChosenScope(optScope);
        parameters.TextToInsert = txtCode.Contents();
        parameters.NoDelimiters = chkNoDelimiters.Value() == forms::CheckBox::Unchecked;
        parameters.WhereToInsert = ChosenPlace();
        Assign(parameters.LineToInsert, CLng(txtLine.Contents()));
        Assign(parameters.ID, CInt(txtID.Contents()));
        parameters.sCCPBufferX = pasteBuffer_;
    }
    return accepted_;
}

std::int16_t FCCInsert::ChosenPlace() const {
    if (optWhere[0].Value()) {
        return 1;
    }
    return optWhere[1].Value() ? std::int16_t{2} : std::int16_t{3};
}

void FCCInsert::Form_Load() {
    codeValid_ = true;
    idValid_ = true;
    lineValid_ = true;
    const Text lastCode = ReadText(host_, constants::LastCustomCodeKey);
    if (!lastCode.empty()) {
        txtCode.SetContents(lastCode);
    }
    LoadWindowState(host_, *this);
    ReadBox(host_, constants::UseDelimitersKey, chkNoDelimiters);
    chkNoDelimiters_Click();
}

// What does not fit a small form keeps its place.
void FCCInsert::Form_Resize() {
    const Twips w = ScaleWidth();
    const Twips h = ScaleHeight();
    Attempt(fraBody.Move({SideMargin, 0, w - 2 * SideMargin, h - StatusBarHeight}));
    Attempt(DBPanel1.SetWidth(w - 180));
    Attempt(DBPanel2.Move({30, 555, DBPanel1.Width(), DBPanel2.Height()}));
    Attempt(DBPanel3.Move({30, CodePanelTop, DBPanel1.Width(), h - 3630}));
    Attempt(Frame1.Move({(w - Frame1.Width() - 120) / 2, DBPanel3.Top() + DBPanel3.Height() + 105,
                         Frame1.Width(), Frame1.Height()}));
}

void FCCInsert::Form_Unload() {
    SaveWindowState(host_, *this);
}

void FCCInsert::DBPanel3_Resize() {
    const Twips w = DBPanel3.Width();
    const Twips h = DBPanel3.Height();
    const forms::Segment line = Line1.Ends();
    Line1.SetEnds({line.x1, line.y1, w - 15, line.y2});
    Attempt(txtCode.Move({15, 405, w - 30, h - 420}));
}

void FCCInsert::txtCode_Change() {
    codeValid_ = !txtCode.Contents().empty();
    UpdateBeginButton();
}

void FCCInsert::txtID_Change() {
    idValid_ = IsNumber(txtID) || chkNoDelimiters.Value() <= forms::CheckBox::Unchecked;
    UpdateBeginButton();
}

void FCCInsert::txtLine_Change() {
    lineValid_ = IsNumber(txtLine) || !optWhere[2].Value();
    UpdateBeginButton();
}

void FCCInsert::txtCode_GotFocus() {
    txtCode.SelectAll();
}

void FCCInsert::txtID_GotFocus() {
    txtID.SelectAll();
}

void FCCInsert::txtLine_GotFocus() {
    txtLine.SelectAll();
}

void FCCInsert::txtCode_KeyDown(std::int16_t keyCode, std::int16_t held) {
    controls::ExchangeWithBuffer(keyCode, held, txtCode, pasteBuffer_, host_.toolkit);
}

void FCCInsert::chkNoDelimiters_Click() {
    const bool enabled = IsChecked(chkNoDelimiters);
    lblID.SetEnabled(enabled);
    txtID.SetEnabled(enabled);
    udID.SetEnabled(enabled);
    txtID_Change();
}

void FCCInsert::optWhere_Click() {
    const bool enabled = optWhere[2].Value();
    txtLine.SetEnabled(enabled);
    udLine.SetEnabled(enabled);
    txtLine_Change();
}

void FCCInsert::cmdStart_Click() {
    accepted_ = true;
    SaveText(host_, constants::LastCustomCodeKey, txtCode.Contents());
    SaveBox(host_, constants::UseDelimitersKey, chkNoDelimiters);
    Hide();
}

void FCCInsert::cmdCancel_Click() {
    Hide();
}

void FCCInsert::Command1_Click() {
    ShowHelpTopic(host_, CommonDialog1, CustomCodeTopic);
}

void FCCInsert::UpdateBeginButton() {
    TextView complaint;
    if (!lineValid_) {
        complaint = u"Enter the number of the line at which the code is to be inserted.";
    } else if (!idValid_) {
        complaint = u"Enter the numeric ID of the markup lines.";
    } else if (!codeValid_) {
        complaint = u"Enter the code to insert.";
    }
    cmdStart.SetEnabled(complaint.empty());
    StatusBar1.SetSimpleText(complaint);
}

}  // namespace lintara::dialogs
