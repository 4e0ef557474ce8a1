// What the widgets of a form are to each other: whose label, whose name, who comes next.
#pragma once

#include "forms/form.h"
#include "ui/qt/view_maker.h"

namespace lintara::ui {

// Each label with an access key leads to the next control that takes the focus, so Qt underlines the key.
void ConnectLabels(const forms::Form& form, const Views& views);

// Tells assistive technology what texts, trees and arrows are: by their description, else by the label in
// front. Buttons have their captions.
void NameWidgets(const forms::Form& form, const Views& views);

// The order in which Qt goes from widget to widget is the form's.
void OrderTabs(const forms::Form& form, const Views& views);

}  // namespace lintara::ui
