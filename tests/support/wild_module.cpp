#include "tests/support/wild_module.h"

#include "tests/support/random.h"

#include <array>
#include <string_view>
#include <vector>

namespace lintara::support {
namespace {

using std::string_view_literals::operator""sv;

// Few names, so that they collide: in other letter cases, as property and method, as variable and procedure.
constexpr std::array names{"Total"sv, "TOTAL"sv, "Load"sv,    "load"sv,
                           "Item"sv,  "x"sv,     "Caf\xE9"sv, "Item_1"sv};

constexpr std::array plainLines{
    ""sv,
    " "sv,
    "\t"sv,
    "       "sv,
    "          "sv,
    "    x = 1"sv,
    "x=1:y=2"sv,
    "    x = 1: y = 2"sv,
    "       seven = blanks"sv,
    "              fourteen = blanks"sv,
    "\t\tx = \"tabs\""sv,
    "    ' a comment"sv,
    "' a comment at the left"sv,
    "'"sv,
    ":"sv,
    ": x = 1"sv,
    "    Rem a comment: End Sub"sv,
    "Rem"sv,
    "    s = \"a 'quoted' text: End Sub\""sv,
    "    s = \"un\"\"closed"sv,
    "    MsgBox \"Gr\xFC\xDF"
    "e \x80\x81\x8D\x8F\x90\x9D\xFF\""sv,
    "hErr:"sv,
    "hErr: x = 1"sv,
    "hErr:       x = 1"sv,
    "hErr:           x = 1"sv,
    "Caf\xE9:"sv,
    "10"sv,
    "10 x = 1"sv,
    "10: x = 1"sv,
    "10:x = 1"sv,
    "10000: x = 1"sv,
    "10000:x = 1"sv,
    "10005:     Next"sv,
    "12345678: x = 1"sv,
    "-5: x = 1"sv,
    "1e3: x"sv,
    "&H10: x = 1"sv,
    "10010"sv,
    "10015:"sv,
    "10020: "sv,
    "    x = 1 _"sv,
    "    x = 1 +_"sv,
    "    Call Load(1, _"sv,
    "       2, _"sv,
    "    ' a comment that goes on _"sv,
    "_"sv,
    " _"sv,
    "    name_"sv,
    "    Select Case x"sv,
    "    select case x"sv,
    "Select Case x ' why"sv,
    "    Select Case _"sv,
    "    Case 1"sv,
    "    Case Else: y = 2"sv,
    "Case 2"sv,
    "    End Select"sv,
    "    If x Then"sv,
    "    If x Then 10000"sv,
    "    If x Then GoTo hErr Else 10"sv,
    "    Else"sv,
    "    End If"sv,
    "    GoTo 10000"sv,
    "    GoSub 10"sv,
    "    On x GoTo 10, 20, hErr"sv,
    "    On Error GoTo hErr"sv,
    "    On Error Goto 0"sv,
    "    On Error Resume Next"sv,
    "    Resume 10000"sv,
    "    Return"sv,
    "#If DEMO Then"sv,
    "    #ElseIf FULL Then"sv,
    "#Else"sv,
    "#End If"sv,
    "#Const DEMO = 1"sv,
    "    Exit Sub"sv,
    "    Exit Function"sv,
    "    End"sv,
    "    Debug.Print Erl; x.End; y!End"sv,
    "Attribute Item.VB_Description = \"hidden\""sv,
    "Attribute Load.VB_UserMemId = 0"sv,
    "attribute Item.VB_Description = \"not hidden\""sv,
    "Attribute VB_Name = \"Late\""sv,
    "Dim Total As Long"sv,
    "Private x, Item As String"sv,
    "Declare Function Load Lib \"a.dll\" () As Long"sv,
    "Public Event Item(ByVal x As Long)"sv,
    "Private Type T"sv,
    "    Sub As Long"sv,
    "End Type"sv,
    "Enum E: a = 1: End Enum"sv,
    "\xA0\xA0\xA0\xA0\xA0\xA0\xA0x = 1"sv,
    "    x = \x0C"
    "1 \x0B"sv,
};

constexpr std::array headPrefixes{
    ""sv, "Public "sv, "Private "sv, "Static "sv, "Private Static "sv, "  Friend "sv, "\tpublic static "sv};

constexpr std::array closings{"\xE9"sv,        ""sv,        ""sv,   ""sv,  ""sv,  " "sv, " ' done"sv,
                              "  ' comment"sv, ": x = 1"sv, " :"sv, "'"sv, "X"sv, " _"sv};

struct Kind {
    std::string_view header;
    std::string_view word;
};
constexpr std::array procedureKinds{Kind{"Sub", "Sub"},
                                    Kind{"Sub", "Sub"},
                                    Kind{"Function", "Function"},
                                    Kind{"Property Get", "Property"},
                                    Kind{"Property Let", "Property"},
                                    Kind{"Property Set", "Property"},
                                    Kind{"sub", "sub"}};

class WildWriter {
  public:
    explicit WildWriter(std::uint64_t seed) : random_(seed) {}

    std::string Module(std::size_t lines) {
        Line("Attribute VB_Name = \"Wild\"");
        const bool mostlyClean = random_.Chance(50);
        while (written_ < lines) {
            if (mostlyClean || random_.Chance(70)) {
                Procedure(mostlyClean);
            } else {
                Plain();
            }
        }
        if (random_.Chance(40)) {
            DropLastEnding();
        }
        return std::move(bytes_);
    }

  private:
    void Line(std::string_view text) {
        bytes_ += text;
        const std::size_t kind = random_.Below(100);
        lastEnding_ = kind < 90 || !mixed_ ? 2 : 1;
        bytes_ += lastEnding_ == 2 ? "\r\n"sv : kind < 95 ? "\n"sv : "\r"sv;
        ++written_;
    }

    void DropLastEnding() { bytes_.resize(bytes_.size() - lastEnding_); }

    void Plain() {
        const std::string_view line = random_.Pick(plainLines);
        if (numbered_ || !IsNumbered(line)) {
            Line(line);
        }
    }

    static bool IsNumbered(std::string_view line) {
        return line.starts_with("1") || line.starts_with("-") || line.starts_with("&");
    }

    void Header(const Kind& kind, std::string_view name) {
        std::string header(random_.Pick(headPrefixes));
        header += kind.header;
        header += random_.Chance(5) ? "  " : " ";
        header += name;
        const std::size_t form = random_.Below(20);
        if (form == 0) {
            Line(header + "(a As Long, _");
            Line("    b As Long, _");
            Line("    c As Long)");
        } else if (form == 1) {
            Line(header + "() : x = 1: End " + std::string(kind.word));
        } else if (form == 2) {
            Line(header + "(): x = 1");
        } else if (form == 3) {
            Line(header + "() ' End Sub");
        } else {
            Line(header + "()");
        }
    }

    // A clean procedure has a name of its own and closes as it should; its lines are as wild as any.
    void Procedure(bool clean) {
        const Kind& kind = random_.Pick(procedureKinds);
        const std::string name = clean ? "Proc" + std::to_string(written_) : std::string(random_.Pick(names));
        Header(kind, name);
        for (std::size_t i = random_.Below(12); i > 0; --i) {
            Plain();
        }
        if (!clean && random_.Chance(10)) {
            return;  // never closed, or by the next one's closing line
        }
        std::string closing = clean || random_.Chance(80) ? "" : random_.Chance(50) ? "  " : "10: ";
        closing += random_.Chance(95) ? "End " : "End  ";
        closing += kind.word;
        closing += clean && random_.Chance(80) ? ""sv : random_.Pick(closings);
        Line(closing);
    }

    Random random_;
    std::string bytes_;
    std::size_t written_ = 0;
    std::size_t lastEnding_ = 2;
    bool mixed_ = random_.Chance(50);
    // Code that has numbers is mostly left alone when numbers are inserted, so some modules have none.
    bool numbered_ = random_.Chance(40);
};

}  // namespace

std::string GenerateWildModule(const WildOptions& options) {
    return WildWriter(options.seed).Module(options.lines);
}

}  // namespace lintara::support
