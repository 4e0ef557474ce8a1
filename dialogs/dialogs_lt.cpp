#include "dialogs/dialogs_lt.h"

#include "dialogs/fcc_insert.h"
#include "dialogs/fcc_remove.h"
#include "dialogs/feh_insert.h"
#include "dialogs/feh_remove.h"

namespace lintara {

using dialogs::FCCInsert;
using dialogs::FCCRemove;
using dialogs::FEHInsert;
using dialogs::FEHRemove;
using dialogs::InsertCCParameters;
using dialogs::InsertEHParameters;
using dialogs::RemoveCCParameters;
using dialogs::RemoveEHParameters;

namespace {

// Asks by a dialog of its own.
template <class Dialog, class Parameters>
bool Ask(const dialogs::DialogHost& host, bool (Dialog::*operation)(Parameters&),
         Parameters& parameters) noexcept {
    try {
        Dialog dialog(host);
        const bool accepted = (dialog.*operation)(parameters);
        dialog.Unload();
        return accepted;
    } catch (...) {
        return false;
    }
}

}  // namespace

bool DialogsLT::GetInsertCCParameters(InsertCCParameters& parameters) const noexcept {
    return Ask(host_, &FCCInsert::GetInsertCCParameters, parameters);
}

bool DialogsLT::GetRemoveCCParameters(RemoveCCParameters& parameters) const noexcept {
    return Ask(host_, &FCCRemove::GetRemoveCCParameters, parameters);
}

bool DialogsLT::GetInsertEHParameters(InsertEHParameters& parameters) const noexcept {
    return Ask(host_, &FEHInsert::GetInsertEHParameters, parameters);
}

bool DialogsLT::GetRemoveEHParameters(RemoveEHParameters& parameters) const noexcept {
    return Ask(host_, &FEHRemove::GetRemoveEHParameters, parameters);
}

}  // namespace lintara
