' The dialogs and the history window. A line "press KEY" asks whoever runs the script to press that key in the
' window that comes next.
Dim lintara, dialogs, services, accepted
Dim scope, insertEH, insertLN, label, code, base, numberStep, buffer, noDelimiters, where, line, id

Sub Reset
    scope = 7
    insertEH = False
    insertLN = False
    label = "label"
    code = "code"
    base = "base"
    numberStep = "step"
    buffer = "buffer"
    noDelimiters = True
    where = 7
    line = 7
    id = 7
End Sub

Set lintara = CreateObject("Tarnwick30Lintara.Lintara")
Set services = NewServices
Set lintara.oG = services
Set dialogs = CreateObject("Tarnwick30Lintara.DialogsLT")

Reset
WScript.Echo "press Escape"
accepted = dialogs.GetInsertEHParameters(scope, insertEH, insertLN, label, code, base, numberStep, 4, 5, buffer)
Check "a cancelled dialog says so", accepted, False
Check "and writes nothing", scope & " " & insertEH & " " & insertLN & label & code & base & numberStep & buffer, _
    "7 False Falselabelcodebasestepbuffer"
CheckTrue "the services object restored the dialog's place and saved it", _
    InStr(services.WindowLog, "load FEHInsert;") > 0 And InStr(services.WindowLog, "save FEHInsert;") > 0

Reset
WScript.Echo "press alt+b"
accepted = dialogs.GetInsertEHParameters(scope, insertEH, insertLN, label, code, base, numberStep, 4, 5, buffer)
Check "a confirmed dialog says so", accepted, True
CheckText "the scope is a procedure", scope, 1
CheckTrue "error handlers are wanted", insertEH = True
CheckTrue "line numbers are wanted", insertLN = True
Check "the label", label, "hErr"
CheckTrue "the handler's code", Len(code) > 20
Check "the first number and the step", base & " " & numberStep, "10000 5"

Reset
WScript.Echo "press alt+b"
accepted = dialogs.GetRemoveEHParameters(scope, insertEH, insertLN, 0, 5)
Check "the removal is confirmed", accepted, True
CheckText "without a procedure its scope is the component", scope, 2
CheckTrue "handlers and numbers are to be removed", insertEH = True And insertLN = True

Reset
WScript.Echo "press Escape"
accepted = dialogs.GetRemoveEHParameters(scope, insertEH, insertLN, 4, 5)
Check "the removal is cancelled", accepted & " " & scope & " " & insertEH & " " & insertLN, "False 7 False False"

Reset
code = "Beep"
buffer = ""
WScript.Echo "press alt+b"
accepted = dialogs.GetInsertCCParameters(scope, code, noDelimiters, where, line, id, True, 1, buffer)
Check "custom code is confirmed", accepted, True
Check "the code is the caller's", code, "Beep"
CheckText "its scope is the component", scope, 2
CheckTrue "with delimiters", noDelimiters = False
CheckTrue "at a place", where >= 1 And where <= 3

Reset
WScript.Echo "press Escape"
accepted = dialogs.GetInsertCCParameters(scope, code, noDelimiters, where, line, id, True, 1, buffer)
Check "custom code is cancelled", accepted & code & scope & noDelimiters & where & line & id & buffer, _
    "Falsecode7True777buffer"

Reset
WScript.Echo "press Escape"
accepted = dialogs.GetRemoveCCParameters(scope, id, True, 1)
Check "the removal of custom code is cancelled", accepted & scope & id, "False77"

services.HistSelKey = "chosen before"
WScript.Echo "press Escape"
lintara.ShowHistory
Check "the timer stood still meanwhile", services.HostForm.tmrMain.Log, "False True "
Check "old entries were cleaned up", services.ProjectsData.Item("Shop").HistItems.Log, "back next "
Check "nothing was chosen", services.HistSelKey, ""
CheckText "nothing was opened", services.AddInHost.Opened, ""
EndOfChecks
