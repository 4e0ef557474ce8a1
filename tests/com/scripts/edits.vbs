' What changes code: line numbers, error handlers, custom code, replacing. Each way back gives the code as it was.
Dim lintara, services, module, original, found, start, last, number, numberStep, code

Function BlockOf(name, kind)
    BlockOf = module.Lines(module.ProcStartLine(name, kind), module.ProcCountLines(name, kind))
End Function

Set lintara = CreateObject("Tarnwick30Lintara.Lintara")
Set services = NewServices
Set module = services.VBE.ActiveCodePane.CodeModule
original = module.Text

lintara.LineNumbersInserter "Shop", "Basket", "Add", 10000, 5
Check "without services nothing is edited", module.Text, original
Set lintara.oG = services

number = 10000
numberStep = 5
lintara.LineNumbersInserter "Shop", "Basket", "Add", number, numberStep
Check "lines of a procedure are numbered", BlockOf("Add", vbext_pk_Proc), Lines(Array( _
    "", _
    "Public Sub Add(ByVal amount As Long)", _
    "10000:     total = total + amount", _
    "10005:     If total > 100 Then", _
    "10010:         total = 100", _
    "10015:     End If", _
    "End Sub"))
CheckText "the caller's numbers stay", number & " " & numberStep, "10000 5"
lintara.LineNumbersRemover "Shop", "Basket", "Add"
Check "numbers are taken off again", module.Text, original

lintara.LineNumbersInserter "Shop", "Basket", "Value", 10, 10
CheckTrue "both procedures of a property are numbered", _
    InStr(module.Text, "10:     Value = total") > 0 And InStr(module.Text, "10:     total = newValue") > 0
module.Text = original
lintara.LineNumbersInserter "Shop", "Basket", "Add", "10000", CDbl(5)
CheckTrue "numbers may be texts", InStr(module.Text, "10015:     End If") > 0
module.Text = original

code = "MsgBox ""{MemberName}"""
lintara.ErrorHandlerInserter "Shop", "Basket", "Half", "hErr", code
Check "a procedure gets an error handler", BlockOf("Half", vbext_pk_Proc), Lines(Array( _
    "", _
    "' Rounds down.", _
    "Public Function Half() As Long", _
    "    On Error Goto hErr", _
    "    Half = total \ 2", _
    "' TWErrorHandler begin - please do not modify or remove this line", _
    "Exit Function", _
    "hErr:", _
    "MsgBox ""Half""", _
    "End Function"))
lintara.ErrorHandlerInserter "Shop", "Basket", "Half", "hErr", code
CheckTrue "and no second one", InStr(InStr(module.Text, "hErr:") + 1, module.Text, "hErr:") = 0
lintara.ErrorHandlerRemover "Shop", "Basket", "Half"
CheckTrue "the handler is taken out again", InStr(module.Text, "TWErrorHandler") = 0 And InStr(module.Text, "hErr:") = 0
module.Text = original

lintara.CustomCodeInserter "Shop", "Basket", "Add", "Debug.Print ""{MemberName}""", False, 1, 0, 7
Check "a procedure gets a block of code", BlockOf("Add", vbext_pk_Proc), Lines(Array( _
    "", _
    "Public Sub Add(ByVal amount As Long)", _
    "' TWCustomCode begin - please do not modify or remove this line 7", _
    "Debug.Print ""Add""", _
    "' TWCustomCode end - please do not modify or remove this line 7", _
    "    total = total + amount", _
    "    If total > 100 Then", _
    "        total = 100", _
    "    End If", _
    "End Sub"))
lintara.CustomCodeRemover "Shop", "Basket", "Add", 8
CheckTrue "a block of another number stays", InStr(module.Text, "TWCustomCode begin") > 0
lintara.CustomCodeRemover "Shop", "Basket", "Add", 7
Check "the block is taken out again", module.Text, original
lintara.CustomCodeInserter "Shop", "Basket", "Add", "Beep", True, 3, 2, 7
CheckTrue "a block at a line, without markers", _
    InStr(module.Text, "total + amount" & vbCrLf & "Beep" & vbCrLf & "    If total") > 0
module.Text = original

found = False
start = 1
last = module.CountOfLines
lintara.SearchAndReplace "Basket", "total", "sum", start, last, True, False, found
CheckTrue "a text is found", found = True
Check "the caller's variable tells so as a Boolean", VarType(found), vbBoolean
CheckTrue "and replaced wherever it occurs", InStr(module.Text, "total") = 0 And InStr(module.Text, "sum = newValue") > 0
CheckText "the caller's lines stay", start & " " & last, "1 22"
lintara.SearchAndReplace "Basket", "nothing of the kind", "x", 1, 22, False, True, found
CheckTrue "a text that is not there is not found", found = False
module.Text = original
found = True
lintara.SearchAndReplace "Nowhere", "total", "sum", 1, 22, False, False, found
CheckTrue "nor is one in an unknown component", found = False

lintara.LineNumbersInserter "Shop", "Nowhere", "Add", 10, 10
lintara.LineNumbersInserter "Nowhere", "Basket", "Add", 10, 10
lintara.LineNumbersInserter "Shop", "Basket", "Nothing", 10, 10
lintara.ErrorHandlerInserter "Shop", "Basket", "", "hErr", code
lintara.CustomCodeInserter "", "Basket", "Add", "Beep", False, 1, 0, 1
Check "what does not exist is not edited", module.Text, original

' Callers' mistakes are the one thing that is told.
Dim failure
On Error Resume Next
lintara.LineNumbersInserter "Shop", "Basket"
failure = Err.Number
Err.Clear
CheckTrue "too few arguments are an error", failure <> 0
lintara.NoSuchMember
failure = Err.Number
Err.Clear
CheckTrue "an unknown member is an error", failure <> 0
lintara.LineNumbersInserter "Shop", "Basket", "Add", "no number", 5
failure = Err.Number
Err.Clear
CheckTrue "a text for a number is an error", failure <> 0
On Error Goto 0
Check "and edits nothing", module.Text, original
EndOfChecks
