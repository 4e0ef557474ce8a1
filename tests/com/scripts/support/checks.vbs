' Comparisons that tell their outcome, one a line: "ok NAME" or "FAIL NAME: ...". A script that reached its end
' says so by EndOfChecks; without that line it failed, whatever it told before. scripts/test-windows puts the files
' of this folder in front of each script: the script host has no other way to include them.
Option Explicit

Function Shown(value)
    Select Case VarType(value)
        Case vbEmpty
            Shown = "Empty"
        Case vbNull
            Shown = "Null"
        Case vbObject
            Shown = "an object"
        Case Else
            Shown = TypeName(value) & " """ & Replace(CStr(value), vbCrLf, "|") & """"
    End Select
End Function

Sub Check(name, actual, expected)
    If IsObject(actual) Or IsObject(expected) Then
        WScript.Echo "FAIL " & name & ": objects are compared by CheckTrue"
    ElseIf Shown(actual) = Shown(expected) Then
        WScript.Echo "ok " & name
    Else
        WScript.Echo "FAIL " & name & ": is " & Shown(actual) & ", not " & Shown(expected)
    End If
End Sub

' For numbers and texts whose type is the caller's affair.
Sub CheckText(name, actual, expected)
    Check name, CStr(actual), CStr(expected)
End Sub

Sub CheckTrue(name, condition)
    If condition Then
        WScript.Echo "ok " & name
    Else
        WScript.Echo "FAIL " & name
    End If
End Sub

' Some script hosts lack the language's own Join.
Function Joined(all, separator)
    Dim i
    Joined = ""
    For i = 0 To UBound(all)
        If i > 0 Then Joined = Joined & separator
        Joined = Joined & all(i)
    Next
End Function

' Lines as the code module joins them.
Function Lines(all)
    Lines = Joined(all, vbCrLf)
End Function

Sub EndOfChecks
    WScript.Echo "end of checks"
End Sub
