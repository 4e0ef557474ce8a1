' The member under the caret, and the arithmetic of selection and caret.
Dim lintara, services, pane, text, line, column
Set lintara = CreateObject("Tarnwick30Lintara.Lintara")
CheckText "without services there is no line", lintara.GetLineNumber, 0
Check "without services there is no member", lintara.GetMemberName, ""

Set services = NewServices
Set lintara.oG = services
Set pane = services.VBE.ActiveCodePane

pane.SetSelection 13, 5, 13, 5
CheckText "the line of the caret", lintara.GetLineNumber, 13
Check "the type of a line number", VarType(lintara.GetLineNumber), vbLong
Check "the member under the caret", lintara.GetMemberName, "Half"
Check "a comment above the header hides the kind", lintara.GetMemberType, "?"
pane.SetSelection 4, 1, 9, 2
CheckText "the last line of a selection", lintara.GetLineNumber, 9
Check "the member at its end", lintara.GetMemberName, "Add"
pane.SetSelection 7, 1, 7, 1
Check "the first line of the block tells no kind either", lintara.GetMemberType, "?"
pane.SetSelection 20, 1, 20, 1
Check "a property", lintara.GetMemberName, "Value"
pane.SetSelection 1, 1, 1, 1
Check "no member in the declarations", lintara.GetMemberName, ""
Check "their kind", lintara.GetMemberType, "Property"

Check "the kind of a Sub", lintara.GetMemberTypeEx("Basket", "Add"), "Sub"
Check "the kind of a Function", lintara.GetMemberTypeEx("Basket", "Half"), "Function"
Check "the kind of a property", lintara.GetMemberTypeEx("Basket", "Value"), "Property"
Check "the kind in an unknown component", lintara.GetMemberTypeEx("Nowhere", "Add"), "Property"
Check "the kind of no name", lintara.GetMemberTypeEx("Basket", ""), ""

Set services.VBE.ActiveCodePane = Nothing
CheckText "without a code window there is no line", lintara.GetLineNumber, 0
Check "nor a member", lintara.GetMemberName, ""

' Results in the caller's variables.
text = "abc" & vbCrLf & "def"
Check "a selection in two lines", lintara.GetTextSelection(text, 1, 2, 2, 3), "bc" & vbCrLf & "de"
Check "leaves the lines alone", text, "abc" & vbCrLf & "def"
text = "a" & vbCrLf & "b"
Check "a selection of whole lines", lintara.GetTextSelection(text, 3, 5, 1, 1), "a" & vbCrLf & "b" & vbCrLf
Check "gives the lines their last break", text, "a" & vbCrLf & "b" & vbCrLf
Check "lines by value", lintara.GetTextSelection("abcdef", 1, 1, 2, 4), "bc"
Check "an empty selection", lintara.GetTextSelection("abcdef", 1, 1, 2, 2), ""

Check "a text put into a line", lintara.InsertTextInLine("abcd", "--", 3), "ab--cd"
Check "a text in front of a line", lintara.InsertTextInLine("abcd", "--", 1), "--abcd"
Check "a text at column 0", lintara.InsertTextInLine("abcd", "--", 0), ""

line = 10
column = 5
lintara.TranslateCarret line, column, "12345" & vbCrLf & "67890"
CheckText "the line of the caret behind two lines", line, 11
CheckText "its column", column, 6
lintara.TranslateCarret line, column, "xyz"
CheckText "the line of the caret behind a word", line, 11
CheckText "its column then", column, 9
line = 2147483647
column = 1
lintara.TranslateCarret line, column, vbCrLf
CheckText "a line beyond the last one is not assigned", line, 2147483647
EndOfChecks
