' The services object, the buffers, and the session that loads and stores them.
Dim lintara, services, found, table
Set lintara = CreateObject("Tarnwick30Lintara.Lintara")
CheckTrue "a new object has no services object", lintara.oG Is Nothing

lintara.TarnwickCPBuffer = "two" & vbCrLf & "lines"
Check "the main buffer gives back what it got", lintara.TarnwickCPBuffer, "two" & vbCrLf & "lines"
lintara.TarnwickCPBuffer = ""
Check "the main buffer can be emptied", lintara.TarnwickCPBuffer, ""
lintara.AdditionalCPBuffer(10) = "ten"
lintara.AdditionalCPBuffer(0) = "nought"
lintara.AdditionalCPBuffer(11) = "nowhere"
lintara.AdditionalCPBuffer(-1) = "nowhere"
Check "buffer 10 gives back what it got", lintara.AdditionalCPBuffer(10), "ten"
Check "buffer 0 gives back what it got", lintara.AdditionalCPBuffer(0), "nought"
Check "another buffer is empty", lintara.AdditionalCPBuffer(5), ""
Check "there is no buffer 11", lintara.AdditionalCPBuffer(11), ""
Check "there is no buffer -1", lintara.AdditionalCPBuffer(-1), ""
Check "an index may be a text", lintara.AdditionalCPBuffer("10"), "ten"

' Without a services object nothing happens, and nothing fails.
lintara.InitCodeAutomation
lintara.CloseCodeAutomation
Check "a session without services changes no buffer", lintara.AdditionalCPBuffer(0), "nought"

Set services = NewServices
Set lintara.oG = services
CheckTrue "the services object is the one that was set", lintara.oG Is services
Check "its members are reached through it", lintara.oG.UserName, "ada"

' A database that is open already is used as it is.
Set services.CodeDb = New CodeDatabase
Set table = services.CodeDb.Table
table.Add 2, "kept" & vbCrLf & "code"
table.Add 5, ""
lintara.AdditionalCPBuffer(5) = "five"
lintara.InitCodeAutomation
Check "a stored buffer is loaded", lintara.AdditionalCPBuffer(2), "kept" & vbCrLf & "code"
Check "a stored empty buffer is loaded, too", lintara.AdditionalCPBuffer(5), ""
Check "a buffer without a row keeps its value", lintara.AdditionalCPBuffer(0), "nought"
CheckTrue "the table is closed after loading", services.CodeDb.LastRecordset.IsClosed
Check "loading writes nothing", services.CodeDb.LastRecordset.Log, ""

lintara.AdditionalCPBuffer(9) = "nine"
lintara.CloseCodeAutomation
Check "rows are added and changed in order", services.CodeDb.LastRecordset.Log, _
    "add 0;add 1;edit 2;add 3;add 4;edit 5;add 6;add 7;add 8;add 9;"
CheckText "all ten buffers have rows", table.Count, 10
Check "a buffer is stored", table.Item(9), "nine"
Check "an empty buffer is stored, too", table.Item(7), ""
CheckTrue "the database stays open", Not services.CodeDb Is Nothing

' A database that fails is no error of the caller's.
Set services.CodeDb = New NamedThings
lintara.InitCodeAutomation
lintara.CloseCodeAutomation
Check "a failing database leaves the buffers", lintara.AdditionalCPBuffer(9), "nine"

Set lintara.oG = Nothing
CheckTrue "the services object can be taken away", lintara.oG Is Nothing
EndOfChecks
