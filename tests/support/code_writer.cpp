#include "tests/support/code_writer.h"

#include <algorithm>
#include <array>

namespace lintara::support {
namespace {

using std::string_view_literals::operator""sv;

constexpr std::array nouns{"Customer"sv, "Invoice"sv,  "Order"sv,    "Article"sv, "Price"sv,  "Stock"sv,
                           "Journal"sv,  "Account"sv,  "Payment"sv,  "Address"sv, "Vendor"sv, "Delivery"sv,
                           "Discount"sv, "Currency"sv, "Reminder"sv, "Contract"sv};
constexpr std::array verbs{"Load"sv,  "Save"sv,  "Check"sv,  "Print"sv, "Update"sv,
                           "Count"sv, "Clear"sv, "Export"sv, "Find"sv,  "Post"sv};
constexpr std::array variables{"lngId"sv,    "intCount"sv, "curTotal"sv, "strName"sv, "dtmDue"sv,
                               "blnFound"sv, "varValue"sv, "lngIndex"sv, "strCode"sv, "dblRate"sv};
constexpr std::array controlClasses{"CommandButton"sv, "TextBox"sv, "Label"sv, "CheckBox"sv,
                                    "ComboBox"sv,      "ListBox"sv, "Frame"sv, "OptionButton"sv};
// windows-1252: umlauts, accents, the euro sign, typographic quotes and dashes.
constexpr std::array remarks{
    "the amount is kept without tax until the invoice has been posted"sv,
    "Pr\xFC"
    "fung der Betr\xE4ge vor dem Buchen"sv,
    "the list of open items is read again when the caller closes its form"sv,
    "arrondi \xE0 deux d\xE9"
    "cimales"sv,
    "a null value stands for \x93unknown\x94 \x96 leave it"sv,
    "limit is 5.000 \x80 per delivery"sv,
    "do not change the order of these calls, the totals depend on it"sv,
    "a\xF1o fiscal anterior, m\xE1s el corriente"sv,
    "sets the flag: the caller's form asks for it"sv,
};
constexpr std::array types{"Long"sv, "String"sv, "Currency"sv, "Integer"sv, "Boolean"sv, "Date"sv};

std::string Join(std::initializer_list<std::string_view> pieces) {
    std::string joined;
    for (const std::string_view piece : pieces) {
        joined += piece;
    }
    return joined;
}

}  // namespace

void CodeWriter::Line(std::size_t depth, std::string_view text) {
    if (!text.empty()) {
        bytes_.append(4 * depth, ' ');
    }
    bytes_ += text;
    bytes_ += "\r\n";
}

std::string CodeWriter::Noun() {
    return std::string(random_.Pick(nouns));
}

std::string CodeWriter::Variable() {
    return std::string(random_.Pick(variables));
}

std::string CodeWriter::Number() {
    return std::to_string(random_.Below(random_.Chance(70) ? 100 : 100000));
}

std::string CodeWriter::NewName(std::string_view verb) {
    return Join({verb, Noun(), std::to_string(++names_)});
}

std::string CodeWriter::Comment() {
    return Join({"' ", random_.Pick(remarks)});
}

std::string CodeWriter::Condition() {
    switch (random_.Below(5)) {
        case 0:
            return Join({Variable(), " > ", Number()});
        case 1:
            return Join({"Not mobj", Noun(), " Is Nothing"});
        case 2:
            return Join({"Len(strName) = 0 Or ", Variable(), " = ", Number()});
        case 3:
            return "strCode = \"A:" + Number() + "\"";
        default:
            return "IsValid" + Noun() + "(" + Variable() + ", True)";
    }
}

std::string CodeWriter::Parameters() {
    switch (random_.Below(4)) {
        case 0:
            return "()";
        case 1:
            return Join({"(ByVal lngId As Long, Optional strName As String = \"\")"});
        case 2:
            return "(strCode As String)";
        default:
            return "(ByVal dtmDue As Date, curTotal As Currency)";
    }
}

std::string CodeWriter::Statement() {
    switch (random_.Below(12)) {
        case 0:
            return Join({Variable(), " = ", Variable(), " + mobj", Noun(), ".Quantity * ", Number()});
        case 1:
            return Join({"mobj", Noun(), ".", random_.Pick(verbs), " ", Variable(), ", ", Number(), ", \"",
                         Noun(), "\""});
        case 2:
            return "strName = \"" + Noun() + ": \" & strCode & \" (\" & CStr(lngId) & \")\"";
        case 3:
            return "Set mobj" + Noun() + " = mcol" + Noun() + "s.Item(CStr(lngId))";
        case 4:
            return "If " + Condition() + " Then " + Variable() + " = " + Number();
        case 5:
            return "curTotal = CCur(Format$(curTotal * (1 + dblRate / 100), \"0.00\"))";
        case 6:
            return "lngIndex = InStr(1, strName, \"" + Noun() + "'s\", vbTextCompare)";
        case 7:
            return "Call Log" + Noun() + "(strName, " + Variable() + ")  " + Comment();
        case 8:
            return "Debug.Print Now & \": \" & strName & \" changed to \" & " + Variable();
        case 9:
            return "ReDim Preserve mavarList(LBound(mavarList) To UBound(mavarList) + 1)";
        case 10:
            return Variable() + " = 0: " + Variable() + " = Val(txt" + Noun() + ".Text) + " + Number();
        default:
            return "mavarList(lngIndex) = Array(lngId, strName, " + Variable() + ")";
    }
}

void CodeWriter::Single(std::size_t depth) {
    const std::size_t kind = random_.Below(100);
    if (kind < 9) {
        Line(0, kind < 7 ? "" : "        ");
    } else if (kind < 21) {
        Line(depth, Comment());
    } else {
        Line(depth, Statement());
    }
}

void CodeWriter::IfBlock(std::size_t depth, std::size_t lines) {
    Line(depth, "If " + Condition() + " Then");
    const std::size_t first = (lines - 2) / 2;
    Body(depth + 1, first);
    if (lines - 2 > first + 1) {
        Line(depth, random_.Chance(30) ? "ElseIf " + Condition() + " Then" : "Else");
        Body(depth + 1, lines - 3 - first);
    } else {
        Body(depth + 1, lines - 2 - first);
    }
    Line(depth, "End If");
}

void CodeWriter::Loop(std::size_t depth, std::size_t lines) {
    const std::size_t kind = random_.Below(4);
    constexpr std::array ends{"Next lngIndex"sv, "Loop"sv, "End With"sv, "Wend"sv};
    const std::array begins{std::string("For lngIndex = LBound(mavarList) To UBound(mavarList)"),
                            "Do While " + Condition(), "With mobj" + Noun() + ".Details(lngIndex)",
                            "While " + Condition()};
    Line(depth, begins[kind]);
    Body(depth + 1, lines - 2);
    Line(depth, ends[kind]);
}

void CodeWriter::SelectBlock(std::size_t depth, std::size_t lines) {
    Line(depth, "Select Case " + Variable());
    std::size_t left = lines - 2;
    if (left > 4 && random_.Chance(8)) {
        Line(depth + 1, Comment());
        --left;
    }
    while (left > 0) {
        const bool last = left < 6;
        Line(depth, last ? "Case Else" : "Case " + Number() + ", " + Number());
        const std::size_t part = last ? left - 1 : 1 + random_.Below(3);
        Body(depth + 1, part);
        left -= part + 1;
    }
    Line(depth, "End Select");
}

void CodeWriter::ContinuedCall(std::size_t depth, std::size_t lines) {
    Line(depth, "Call " + std::string(random_.Pick(verbs)) + Noun() + "(lngId, strName, _");
    for (std::size_t i = 2; i < lines; ++i) {
        Line(depth + 2, Variable() + ", \"" + Noun() + "\", _");
    }
    Line(depth + 2, Variable() + ", True)");
}

// Writes one statement of several lines, at most `lines`, and returns how many it took.
std::size_t CodeWriter::Block(std::size_t depth, std::size_t lines) {
    const std::size_t kind = random_.Below(10);
    if (kind < 2) {
        const std::size_t taken = std::min<std::size_t>(lines, 2 + random_.Below(3));
        ContinuedCall(depth, taken);
        return taken;
    }
    const std::size_t taken = std::min<std::size_t>(lines, 5 + random_.Below(depth > 4 ? 4 : 20));
    if (kind < 6) {
        IfBlock(depth, taken);
    } else if (kind < 9) {
        Loop(depth, taken);
    } else {
        SelectBlock(depth, taken);
    }
    return taken;
}

void CodeWriter::Body(std::size_t depth, std::size_t lines) {
    while (lines > 0) {
        if (lines >= 5 && depth < 9 && random_.Chance(22)) {
            lines -= Block(depth, lines);
        } else {
            Single(depth);
            --lines;
        }
    }
}

// `header` up to the closing line, and an empty line behind it.
void CodeWriter::Procedure(std::string_view header, std::string_view kind, std::size_t lines) {
    Line(0, header);
    std::size_t body = lines - 3;
    const bool handles = body >= 10 && random_.Chance(60);
    if (handles) {
        Line(1, "On Error GoTo Failed");
        body -= 5;
    }
    Body(1, body);
    if (handles) {
        Line(1, Join({"Exit ", kind}));
        Line(0, "Failed:");
        Line(1, "ReportError Err.Number, Err.Description, TypeName(Me)");
        Line(1, random_.Chance(50) ? "Resume Next" : "Err.Clear");
    }
    Line(0, Join({"End ", kind}));
    Line(0, "");
}

void CodeWriter::SubOrFunction(std::size_t lines) {
    const bool isFunction = random_.Chance(40);
    const std::string name = NewName(random_.Pick(verbs));
    if (lines > 14 && random_.Chance(30)) {
        Line(0, "'" + std::string(60, '-'));
        Line(0, Comment());
        lines -= 2;
    }
    if (isFunction) {
        Procedure("Public Function " + name + Parameters() + " As " + std::string(random_.Pick(types)),
                  "Function", lines);
    } else {
        Procedure((random_.Chance(50) ? "Private Sub " : "Public Sub ") + name + Parameters(), "Sub", lines);
    }
}

void CodeWriter::PropertyPair(std::size_t lines) {
    const std::string name = NewName("");
    const bool isObject = random_.Chance(20);
    const std::string type = isObject ? "Object" : std::string(random_.Pick(types));
    const std::size_t first = lines / 2;
    const std::string hidden = "Attribute " + name + ".VB_Description = \"The record's value.\"\r\n";
    Line(0, "Public Property Get " + name + "() As " + type);
    if (random_.Chance(30)) {
        bytes_ += hidden;
    }
    Body(1, first - 3);
    Line(0, "End Property");
    Line(0, "");
    Procedure(
        "Public Property " + std::string(isObject ? "Set " : "Let ") + name + "(ByVal vNew As " + type + ")",
        "Property", lines - first);
}

void CodeWriter::Declarations(std::size_t lines) {
    for (std::size_t i = 0; i < lines; ++i) {
        if (i == 0) {
            Line(0, "Option Explicit");
        } else if (i + 1 == lines || i == 1) {
            Line(0, "");
        } else if (random_.Chance(15)) {
            Line(0, Comment());
        } else if (random_.Chance(10)) {
            Line(0, "Private Const c" + NewName("Max") + " As Long = " + Number());
        } else {
            Line(0, "Private " + NewName("m") + " As " + std::string(random_.Pick(types)));
        }
    }
}

void CodeWriter::Code(std::size_t lines, std::size_t procedures, double propertyShare) {
    constexpr std::size_t shortest = 8;
    const std::size_t head = std::min<std::size_t>(lines, 3 + lines / 50);
    Declarations(head);
    std::size_t left = lines - head;
    procedures = std::min(procedures, left / shortest);
    const auto properties = static_cast<std::size_t>(propertyShare * static_cast<double>(procedures) / 2);
    std::size_t pairs = properties;
    std::size_t singles = procedures - 2 * properties;
    while (pairs + singles > 0) {
        const bool pair = random_.Below(pairs + singles) < pairs;
        const std::size_t still = 2 * pairs + singles;
        const std::size_t share = left / still * (pair ? 2 : 1);
        const bool last = pairs + singles == 1;
        // About the share, between half and one and a half of it, never less than the others need.
        const std::size_t spare = left - shortest * still;
        const std::size_t wanted = share / 2 + random_.Below(share + 1);
        const std::size_t least = shortest * (pair ? 2 : 1);
        const std::size_t taken = last ? left : std::clamp(wanted, least, least + spare);
        pair ? PropertyPair(taken) : SubOrFunction(taken);
        --(pair ? pairs : singles);
        left -= taken;
    }
    while (left > 0) {
        Line(0, Comment());
        --left;
    }
}

void CodeWriter::ModuleHead(std::string_view name) {
    Line(0, Join({"Attribute VB_Name = \"", name, "\""}));
}

void CodeWriter::ClassHead(std::string_view name) {
    for (const std::string_view line :
         {"VERSION 1.0 CLASS"sv, "BEGIN"sv, "  MultiUse = -1  'True"sv,
          "  Persistable = 0  'NotPersistable"sv, "  DataBindingBehavior = 0  'vbNone"sv,
          "  DataSourceBehavior  = 0  'vbNone"sv, "  MTSTransactionMode  = 0  'NotAnMTSObject"sv, "END"sv}) {
        Line(0, line);
    }
    ModuleHead(name);
    Line(0, "Attribute VB_GlobalNameSpace = False");
    Line(0, "Attribute VB_Creatable = True");
    Line(0, "Attribute VB_PredeclaredId = False");
    Line(0, "Attribute VB_Exposed = True");
    Line(0, "Attribute VB_Ext_KEY = \"SavedWithClassBuilder\" ,\"Yes\"");
}

// A control of the form, with a nested font from 11 lines on.
void CodeWriter::Control(std::size_t lines) {
    const std::string_view type = random_.Pick(controlClasses);
    Line(0, Join({"   Begin VB.", type, " ctl", type, std::to_string(++controls_), " "}));
    std::size_t left = lines - 2;
    if (left >= 9) {
        for (const std::string_view line :
             {"      BeginProperty Font "sv, "         Name            =   \"Tahoma\""sv,
              "         Size            =   8.25"sv, "         Charset         =   0"sv,
              "         Weight          =   400"sv, "         Underline       =   0   'False"sv,
              "         Italic          =   0   'False"sv, "      EndProperty"sv}) {
            Line(0, line);
        }
        left -= 8;
    }
    constexpr std::array properties{"Height"sv, "Left"sv, "Top"sv, "Width"sv, "TabIndex"sv, "MaxLength"sv};
    for (std::size_t i = 0; i < left; ++i) {
        std::string property(properties[i % properties.size()]);
        property.resize(16, ' ');
        Line(0, "      " + property + "=   " + std::to_string(15 * random_.Below(800)));
    }
    Line(0, "   End");
}

void CodeWriter::FormHead(std::string_view name, std::size_t lines) {
    Line(0, "VERSION 5.00");
    Line(0, Join({"Begin VB.Form ", name, " "}));
    Line(0, Join({"   Caption         =   \"", name, "\""}));
    Line(0, "   ClientHeight    =   6420");
    Line(0, "   ClientLeft      =   60");
    Line(0, "   ClientTop       =   345");
    Line(0, "   ClientWidth     =   9480");
    std::size_t left = lines - 13;
    while (left > 0) {
        const std::size_t taken = left < 26 ? left : 8 + random_.Below(10);
        Control(taken);
        left -= taken;
    }
    Line(0, "End");
    ModuleHead(name);
    Line(0, "Attribute VB_GlobalNameSpace = False");
    Line(0, "Attribute VB_Creatable = False");
    Line(0, "Attribute VB_PredeclaredId = True");
    Line(0, "Attribute VB_Exposed = False");
}

}  // namespace lintara::support
