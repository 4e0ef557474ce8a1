' Templates into code, and code into templates.
Dim lintara, services, pane, template, component, member, code
Set lintara = CreateObject("Tarnwick30Lintara.Lintara")
Set services = NewServices
Set lintara.oG = services
Set pane = services.VBE.ActiveCodePane

template = "{ProjectName}.{ComponentName}.{MemberName} {MemberType} on {ComputerName} by {UserName}"
component = "Basket"
member = "Half"
Check "a template for a member", lintara.ParsePseudoCodeEx(template, component, member), _
    "Shop.Basket.Half Function on WORKBENCH by ada"
Check "leaves the caller's variables", template & component & member, _
    "{ProjectName}.{ComponentName}.{MemberName} {MemberType} on {ComputerName} by {UserName}BasketHalf"
Check "placeholders of a missing member stay", lintara.ParsePseudoCodeEx("{ComponentName}/{MemberName}", "Basket", ""), _
    "Basket/{MemberName}"
Check "the control of an event procedure", _
    lintara.ParsePseudoCodeEx("{ControlName}", "Counter", "cmdPay_Click"), "cmdPay"
CheckText "today's date", lintara.ParsePseudoCodeEx("{Date}", "Basket", "Half"), FormatDateTime(Date, vbShortDate)
CheckText "the time holds two colons", UBound(Split(lintara.ParsePseudoCodeEx("{Time}", "Basket", "Half"), ":")), 2

pane.SetSelection 5, 1, 5, 1
Check "a template for the member under the caret", lintara.ParsePseudoCode("{ComponentName}.{MemberName}"), "Basket.Add"
code = "MsgBox ""Basket.Add of Shop"""
Check "code into a template", lintara.GeneratePseudoCode(code), _
    "MsgBox ""{ComponentName}.{MemberName} of {ProjectName}"""
Check "leaves the caller's code", code, "MsgBox ""Basket.Add of Shop"""
Check "an empty template", lintara.ParsePseudoCode(""), ""
EndOfChecks
