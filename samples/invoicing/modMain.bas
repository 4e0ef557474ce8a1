Attribute VB_Name = "modMain"
Option Explicit
'
' Start of the application, its settings and its log.
'
#Const TRACING = 1

Private Const LOG_NAME As String = "invoicing.log"
Private mintLog As Integer
Private mcolInvoices As Collection

' The application begins here. With a file name on the command line that file is
' imported, else the window opens.
Public Sub Main()
    Dim strFile As String
    
    On Error GoTo Failed
    gstrCompany = "Hill & Daughters": gdtmToday = Date
    Set mcolInvoices = New Collection
    strFile = Trim$(Command$)
    If Len(strFile) > 0 Then
        ImportInvoices strFile
        Exit Sub
    End If

#If DEMO Then
    MsgBox "This is a demonstration: nothing is saved.", vbInformation
#ElseIf TRACING Then
    Trace "started by '" & Environ$("USERNAME") & "': " & Now
#Else
    Trace "started"
#End If
    frmInvoice.Show
    Exit Sub

Failed:
    MsgBox "The application cannot start: " & Err.Description, vbCritical
    Resume CleanUp
CleanUp:
    CloseLog
End Sub

Public Sub Trace(ByVal strText As String)
    If mintLog = 0 Then
        mintLog = FreeFile
        Open App.Path & "\" & LOG_NAME For Append As #mintLog
    End If
    Print #mintLog, Format$(Now, "yyyy-mm-dd hh:nn:ss"); " "; strText
End Sub

Public Sub CloseLog(): If mintLog <> 0 Then Close #mintLog: mintLog = 0
End Sub

Public Function LogIsOpen() As Boolean: LogIsOpen = (mintLog <> 0): End Function

' Reads a text file of one invoice a line: number; customer; article; quantity; price.
Public Sub ImportInvoices(strFile As String, _
                          Optional ByVal blnSkipHead As Boolean = True, _
                          Optional ByVal strSeparator As String = ";")
    Dim intFile As Integer, lngLine As Long
    Dim strLine As String
    Dim varFields As Variant
    Dim objInvoice As CInvoice

    On Error GoTo ImportFailed
    intFile = FreeFile
    Open strFile For Input As #intFile
NextLine:
    Do While Not EOF(intFile)
        Line Input #intFile, strLine: lngLine = lngLine + 1
        If lngLine = 1 And blnSkipHead Then GoTo NextLine
        If Len(Trim$(strLine)) = 0 Then GoTo NextLine
        varFields = Split(strLine, strSeparator)
        If UBound(varFields) < 4 Then Err.Raise vbObjectError + 513, , _
            "Line " & lngLine & " of '" & strFile & "' has " & _
            (UBound(varFields) + 1) & " fields; 5 are needed."
        Set objInvoice = FindInvoice(CLng(varFields(0)))
        With objInvoice
            .Customer = varFields(1)
            .AddLine varFields(2), _
                     CCur(varFields(3)), _
                     CCur(varFields(4))

        End With
    Loop
    Close #intFile
    Exit Sub

ImportFailed:
    Select Case Err.Number
        ' What the user can mend, the user is told.
        ' Everything else is for the log.
        Case 13
            MsgBox "Line " & lngLine & ": not a number.", vbExclamation
            Resume NextLine
        Case 53, 76: MsgBox "There is no file '" & strFile & "'.", vbExclamation
        Case Else
            Trace "import: " & Err.Number & " " & Err.Description
    End Select
    If intFile <> 0 Then Close #intFile
End Sub

Private Function FindInvoice(ByVal lngNumber As Long) As CInvoice
    On Error Resume Next
    Set FindInvoice = mcolInvoices.Item("N" & lngNumber)
    On Error Goto 0
    If FindInvoice Is Nothing Then
       Set FindInvoice = New CInvoice
       FindInvoice.Number = lngNumber
       mcolInvoices.Add FindInvoice, "N" & lngNumber
    End If
End Function

Rem Every invoice of the session, oldest first: for the reminders.
Public Function OverdueInvoices(ByVal intDays As Integer) As Collection
    Dim objInvoice As CInvoice
    Set OverdueInvoices = New Collection
    For Each objInvoice In mcolInvoices
        If objInvoice.State = isPosted Then
            If DateDiff("d", objInvoice.DueDate, gdtmToday) > intDays Then
                If objInvoice.Total > 0 Then
                    If Not objInvoice.IsDisputed Then
                        If Len(objInvoice.Customer) > 0 Then
                            If objInvoice.Reminders < 3 Then
                                OverdueInvoices.Add objInvoice
                            End If
                        End If
                    End If
                End If
            End If
        End If
    Next objInvoice
End Function

' A number of its own for each call, kept while the application runs.
Public Static Function NextNumber(Optional ByVal lngFirst As Long = 1000) As Long
    Dim lngLast As Long
    If lngLast = 0 Then lngLast = lngFirst - 1
    lngLast = lngLast + 1: NextNumber = lngLast
End Function  ' NextNumber()
