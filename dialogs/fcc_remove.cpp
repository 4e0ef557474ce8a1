#include "dialogs/fcc_remove.h"

#include "base/numbers.h"
#include "base/statement.h"
#include "dialogs/conventions.h"

#include <utility>

namespace lintara::dialogs {

using forms::Color;
using forms::Rect;
using forms::Size;
using forms::Twips;
using forms::UpDown;

namespace {

constexpr Twips Margin = 90;
constexpr Size DesignSize{ScopePanelWidth + 2 * Margin, 2010};
constexpr Rect ButtonsPlace{(DesignSize.width - ButtonsSize.width) / 2, 1515, ButtonsSize.width,
                            ButtonsSize.height};
constexpr UpDown::Range Numbers{.min = 1, .max = 10000};

}  // namespace

FCCRemove::FCCRemove(DialogHost host)
    : Form(u"FCCRemove", u"Remove custom code", DesignSize),
      DBPanel1(*this, u"DBPanel1", {Margin, 90, ScopePanelWidth, ScopePanelHeight}),
      Label1(DBPanel1, u"Label1", ScopeHeadingPlace, u"Remove from:"),
      optScope(MakeScopeOptions(DBPanel1)),
      DBPanel2(*this, u"DBPanel2", {Margin, 555, ScopePanelWidth, 855}),
      Label2(DBPanel2, u"Label2", {120, 90, 3000, 225}, u"Identification:"),
      Shape2(DBPanel2, u"Shape2", {3630, 390, 1290, 345}, Color::ButtonShadow),
      Label3(DBPanel2, u"Label3", {120, 450, 3465, 225}, u"Re&move the code having the following ID:"),
      txtID(DBPanel2, u"txtID", {3675, 450, 960, 240}, u"1"),
      udID(DBPanel2, u"udID", {4650, 420, 240, 285}, txtID, Numbers),
      Frame1(*this, u"Frame1", ButtonsPlace),
      cmdStart(Frame1, u"cmdStart", ButtonPlace(0), u"&Begin"),
      cmdCancel(Frame1, u"cmdCancel", ButtonPlace(1), u"&Cancel"),
      Command1(Frame1, u"Command1", ButtonPlace(2), u"&Help"),
      host_(std::move(host)) {
    resizable = false;
    minimum = DesignSize;
    txtID.bordered = false;
    cmdStart.isDefault = true;
    cmdCancel.isCancel = true;
    Load.Handle([this] { Form_Load(); });
    Unloading.Handle([this] { Form_Unload(); });
    txtID.Change.Handle([this] { txtID_Change(); });
    txtID.GotFocus.Handle([this] { txtID_GotFocus(); });
    cmdStart.Click.Handle([this] { cmdStart_Click(); });
    cmdCancel.Click.Handle([this] { cmdCancel_Click(); });
    Command1.Click.Handle([this] { Command1_Click(); });
}

bool FCCRemove::GetRemoveCCParameters(RemoveCCParameters& parameters) {
    EnsureLoaded();
    OfferScopes(optScope, parameters.ProcAvailable, parameters.ComponentAvailable);
    ShowModal(host_.toolkit);
    if (accepted_) {
        parameters.Scope = ChosenScope(optScope);
        Assign(parameters.ID, CInt(txtID.Contents()));
    }
    return accepted_;
}

void FCCRemove::Form_Load() {
    LoadWindowState(host_, *this);
}

void FCCRemove::Form_Unload() {
    SaveWindowState(host_, *this);
}

void FCCRemove::txtID_Change() {
    cmdStart.SetEnabled(!txtID.Contents().empty() && IsNumeric(txtID.Contents()));
}

void FCCRemove::txtID_GotFocus() {
    txtID.SelectAll();
}

void FCCRemove::cmdStart_Click() {
    accepted_ = true;
    Hide();
}

void FCCRemove::cmdCancel_Click() {
    Hide();
}

void FCCRemove::Command1_Click() {
    ShowHelpTopic(host_, CommonDialog1, CustomCodeTopic);
}

}  // namespace lintara::dialogs
