// A services object with nothing but a navigation history, that of "Project1"; what is done with it is noted.
#pragma once

#include "base/utf8.h"
#include "hostmodel/globals.h"

#include <array>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace lintara::ui::win32 {

class HistoryGlobals final : public hostmodel::Globals {
  public:
    std::array<Text, 10> back;
    std::array<Text, 10> next;
    Text currentKey;
    Text selKey;
    Text selObject;
    std::vector<std::string> log;

    Result<std::shared_ptr<hostmodel::VBE>> VBE() override { return std::make_shared<Ide>(); }
    Result<std::shared_ptr<hostmodel::Dispatch>> ProjectsData() override {
        return std::make_shared<Object>([this](TextView,
                                               std::span<const hostmodel::Value>) -> hostmodel::Value {
            return std::make_shared<Object>([this](TextView, std::span<const hostmodel::Value>) {
                return hostmodel::Value(
                    std::make_shared<Object>([this](TextView list, std::span<const hostmodel::Value> index) {
                        const auto slot = static_cast<std::size_t>(std::get<std::int32_t>(index[0]));
                        return hostmodel::Value(list == u"HistBackItem" ? back.at(slot) : next.at(slot));
                    }));
            });
        });
    }
    Result<Text> HistSeparator() override { return Text(u"|"); }
    Result<Text> HistCurrentKey() override { return currentKey; }
    Result<Text> HistSelKey() override { return selKey; }
    Result<void> SetHistSelKey(TextView key) override {
        selKey = key;
        return {};
    }
    Result<Text> HistSelObject() override { return selObject; }
    Result<void> SetHistSelObject(TextView object) override {
        selObject = object;
        return {};
    }
    Result<void> LoadWindowState(hostmodel::PlacedWindow& window) override {
        log.push_back("load " + ToUtf8(window.Name()));
        return {};
    }
    Result<void> SaveWindowState(const hostmodel::PlacedWindow& window) override {
        log.push_back("save " + ToUtf8(window.Name()));
        return {};
    }

    Result<Text> ComputerName() override { return Nothing(); }
    Result<Text> UserName() override { return Nothing(); }
    Result<Text> TokenBefore(TextView, TextView) override { return Nothing(); }
    Result<Text> CodeDbPath() override { return Nothing(); }
    Result<void> SetCodeDbPath(TextView) override { return Nothing(); }
    Result<std::shared_ptr<hostmodel::Database>> CodeDb() override { return Nothing(); }
    Result<void> SetCodeDb(std::shared_ptr<hostmodel::Database>) override { return Nothing(); }
    Result<std::shared_ptr<hostmodel::Dispatch>> HostForm() override { return Nothing(); }
    Result<std::shared_ptr<hostmodel::Dispatch>> AddInHost() override { return Nothing(); }

  private:
    static std::unexpected<HostError> Nothing() {
        return Failure(ErrorNumber::ObjectNotSet, "there is no such thing here");
    }

    struct Project final : hostmodel::VBProject {
        Result<Text> Name() override { return Text(u"Project1"); }
        Result<std::shared_ptr<hostmodel::VBComponents>> VBComponents() override { return Nothing(); }
    };
    struct Ide final : hostmodel::VBE {
        Result<std::shared_ptr<hostmodel::VBProjects>> VBProjects() override { return Nothing(); }
        Result<std::shared_ptr<hostmodel::VBProject>> ActiveVBProject() override {
            return std::make_shared<Project>();
        }
        Result<std::shared_ptr<hostmodel::CodePane>> ActiveCodePane() override { return Nothing(); }
    };
    // An object whose members are what a function says.
    struct Object final : hostmodel::Dispatch {
        using Members = std::function<hostmodel::Value(TextView, std::span<const hostmodel::Value>)>;
        explicit Object(Members theMembers) : members(std::move(theMembers)) {}
        Result<hostmodel::Value> Invoke(TextView name, std::span<const hostmodel::Value> arguments) override {
            return members(name, arguments);
        }
        Result<void> Put(TextView, const hostmodel::Value&) override { return Nothing(); }
        Members members;
    };
};

// A history of every kind of entry.
inline void FillHistory(HistoryGlobals& globals) {
    globals.back = {u"modTax.VatRate|LoadRates",
                    u"modTax.GrossOf|GrossOf = RoundMoney(curNet)",
                    u"CInvoice.AddLine|mcolLines.Add objLine",
                    u"CInvoice|Option Explicit",
                    u"frmMain.cmdPrint_Click|PrintInvoice mobjInvoice",
                    u"frmMain.Form_Load|LoadSettings"};
    globals.next = {u"modTax.LoadRates|madblRates(0) = 0", u"modTax.RoundMoney|End Function",
                    u"modMain.Main|frmMain.Show"};
    globals.currentKey = u"Back|1";
}

}  // namespace lintara::ui::win32
