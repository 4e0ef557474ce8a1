#include "history/fhistory.h"

#include "base/statement.h"
#include "base/strings.h"
#include "dialogs/placed_form.h"
#include "hostmodel/history_items.h"

#include <algorithm>
#include <array>
#include <utility>
#include <variant>

namespace lintara::history {

using forms::Color;
using forms::MousePointer;
using forms::Size;
using forms::TreeNode;
using forms::Twips;
using hostmodel::Value;

namespace {

constexpr Size DesignSize{6600, 6000};
constexpr Twips Margin = 90;
constexpr Twips FooterHeight = 570;
constexpr Twips TreePanelHeight = DesignSize.height - FooterHeight - 3 * Margin;
constexpr Twips PanelWidth = DesignSize.width - 2 * Margin;
constexpr Size ButtonSize{1275, 390};

constexpr std::int16_t EnterKey = 13;

// Shows the hourglass while it lives.
class Hourglass {
  public:
    explicit Hourglass(forms::Toolkit& toolkit) : toolkit_(toolkit) {
        toolkit_.SetMousePointer(MousePointer::Hourglass);
    }
    ~Hourglass() { toolkit_.SetMousePointer(MousePointer::Default); }

    Hourglass(const Hourglass&) = delete;
    Hourglass& operator=(const Hourglass&) = delete;

  private:
    forms::Toolkit& toolkit_;
};

// The latest entries stand out: five to go back to, two to go on to. Users know them by these numbers.
constexpr bool StandsOut(std::size_t slot) {
    return slot <= 4 || slot == 10 || slot == 11;
}

// The child of `parent` with that caption, at the top when `parent` is null; made when there is none.
TreeNode* FindOrAdd(forms::TreeView& tree, TreeNode* parent, TextView caption) {
    const auto& siblings = parent == nullptr ? tree.Roots() : parent->Children();
    const auto found = std::ranges::find(siblings, caption, &TreeNode::Caption);
    if (found != siblings.end()) {
        return *found;
    }
    TreeNode* node = nullptr;
    Assign(node, tree.Add(parent, u"", caption));
    if (node != nullptr) {
        node->SetExpanded(true);
    }
    return node;
}

// Reads one entry into its slot, which stays as it is when the host has none.
void ReadSlot(hostmodel::Dispatch& histItems, TextView list, std::size_t index, Text& slot) {
    const std::array<Value, 1> arguments{static_cast<std::int32_t>(index)};
    Value entry;
    Assign(entry, histItems.Invoke(list, arguments));
    if (auto* const text = std::get_if<Text>(&entry)) {
        slot = std::move(*text);
    }
}

}  // namespace

FHistory::FHistory(hostmodel::Globals& globals, forms::Toolkit& toolkit)
    : Form(u"FHistory", u"Navigation history", DesignSize),
      DBPanel1(*this, u"DBPanel1", {Margin, Margin, PanelWidth, TreePanelHeight}),
      tvwHistory(DBPanel1, u"tvwHistory", {15, 15, PanelWidth - 30, TreePanelHeight - 30}),
      DBPanel2(*this, u"DBPanel2", {Margin, TreePanelHeight + 2 * Margin, PanelWidth, FooterHeight}),
      Label1(DBPanel2, u"Label1", {120, 165, PanelWidth - ButtonSize.width - 330, 240},
             u"Double-click a place, or press Enter, to go there."),
      cmdClose(DBPanel2, u"cmdClose",
               {PanelWidth - ButtonSize.width - 90, 90, ButtonSize.width, ButtonSize.height}, u"&Close"),
      globals_(globals),
      toolkit_(toolkit) {
    minimum = {6000, 2400};
    tvwHistory.description = u"Places in the code";
    cmdClose.isCancel = true;
    HandleEvents();
}

void FHistory::HandleEvents() {
    Load.Handle([this] { Form_Load(); });
    Resize.Handle([this] { Form_Resize(); });
    Unloading.Handle([this] { Form_Unload(); });
    DBPanel1.Resize.Handle([this] { DBPanel1_Resize(); });
    DBPanel2.Resize.Handle([this] { DBPanel2_Resize(); });
    tvwHistory.DblClick.Handle([this] { tvwHistory_DblClick(); });
    tvwHistory.KeyPress.Handle([this](std::int16_t keyAscii) { tvwHistory_KeyPress(keyAscii); });
    cmdClose.Click.Handle([this] { cmdClose_Click(); });
}

void FHistory::Form_Load() {
    const Hourglass hourglass(toolkit_);
    dialogs::PlacedForm window(*this);
    Attempt(globals_.LoadWindowState(window));
    FillTree();
    SelectCurrent();
}

// What does not fit a small window keeps its place.
void FHistory::Form_Resize() {
    const Twips w = ScaleWidth() - 2 * Margin;
    const Twips h = ScaleHeight() - FooterHeight - 3 * Margin;
    Attempt(DBPanel1.Move({Margin, Margin, w, h}));
    Attempt(DBPanel2.Move({Margin, DBPanel1.Top() + DBPanel1.Height() + Margin, w, FooterHeight}));
}

void FHistory::Form_Unload() {
    const dialogs::PlacedForm window(*this);
    Attempt(globals_.SaveWindowState(window));
}

void FHistory::DBPanel1_Resize() {
    Attempt(tvwHistory.Move({15, 15, DBPanel1.Width() - 30, DBPanel1.Height() - 30}));
}

void FHistory::DBPanel2_Resize() {
    Attempt(cmdClose.SetLeft(DBPanel2.Width() - cmdClose.Width() - 90));
    Attempt(Label1.SetWidth(cmdClose.Left() - Label1.Left() - 120));
}

void FHistory::ReadEntries() {
    Assign(separator_, globals_.HistSeparator());
    std::shared_ptr<hostmodel::Dispatch> histItems;
    Assign(histItems, hostmodel::HistItemsOfActiveProject(globals_));
    if (histItems == nullptr) {
        return;
    }
    for (std::size_t i = 0; i < EntriesPerGroup; ++i) {
        ReadSlot(*histItems, u"HistBackItem", i, entries_[i]);
        ReadSlot(*histItems, u"HistNextItem", i, entries_[i + EntriesPerGroup]);
    }
}

void FHistory::FillTree() {
    tvwHistory.Clear();
    ReadEntries();
    for (std::size_t slot = 0; slot < SlotCount; ++slot) {
        if (!entries_[slot].empty()) {
            AddEntry(slot);
        }
    }
    if (tvwHistory.Nodes().empty()) {
        Label1.SetCaption(u"No places of this project are remembered yet.");
    }
}

// Components stand in the order of their latest entries, and entries in that of their slots: the latest
// first.
void FHistory::AddEntry(std::size_t slot) {
    const Entry entry = ReadEntry(entries_[slot], separator_);
    TreeNode* const group = FindOrAdd(tvwHistory, nullptr, GroupOf(slot));
    TreeNode* const component = FindOrAdd(tvwHistory, group, entry.component);
    TreeNode* node = nullptr;
    Assign(node, tvwHistory.Add(component, KeyOf(slot, separator_), entry.caption));
    if (node == nullptr) {
        return;
    }
    node->tag = entries_[slot];
    if (StandsOut(slot)) {
        node->SetBold(true);
        node->SetForeColor(Color::Highlight);
    }
}

void FHistory::SelectCurrent() {
    Text key;
    Assign(key, globals_.HistCurrentKey());
    if (TreeNode* const node = tvwHistory.Find(key)) {
        tvwHistory.SetSelectedItem(node);
        node->EnsureVisible();
    }
}

void FHistory::tvwHistory_DblClick() {
    ChooseSelected();
}

void FHistory::tvwHistory_KeyPress(std::int16_t keyAscii) {
    if (keyAscii == EnterKey) {
        ChooseSelected();
    }
}

void FHistory::ChooseSelected() {
    const TreeNode* const node = tvwHistory.SelectedItem();
    if (node == nullptr || InStr(node->Key(), separator_) == 0) {
        return;
    }
    Attempt(globals_.SetHistSelKey(node->Key()));
    Attempt(globals_.SetHistSelObject(node->tag));
    Unload();
}

void FHistory::cmdClose_Click() {
    Unload();
}

}  // namespace lintara::history
