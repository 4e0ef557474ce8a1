' The IDE's object model over arrays of lines, as the component server sees it: root, projects, components, code
' module, code window, member list, designer. Lines count from 1. What does not exist raises an error.
Const vbext_pk_Proc = 0
Const vbext_pk_Let = 1
Const vbext_pk_Set = 2
Const vbext_pk_Get = 3
Const NoSuchThing = 9

Class NamedThings
    Private things_

    Private Sub Class_Initialize
        Set things_ = CreateObject("Scripting.Dictionary")
        things_.CompareMode = vbTextCompare
    End Sub

    Public Sub Add(name, thing)
        things_.Add name, thing
    End Sub

    Public Default Function Item(name)
        If Not things_.Exists(name) Then Err.Raise NoSuchThing, "Item", "there is no """ & name & """"
        Set Item = things_.Item(name)
    End Function

    Public Property Get Count
        Count = things_.Count
    End Property
End Class

Class ModuleMember
    Public Name
    Public CodeLocation
    Public Type
End Class

Class ModuleMembers
    Public Module

    ' By name or by an index from 1.
    Public Default Function Item(index)
        Dim found, line, position
        position = 0
        For line = 1 To Module.CountOfLines
            If Module.HeaderName(line) <> "" Then
                position = position + 1
                If StrComp(Module.HeaderName(line), CStr(index), vbTextCompare) = 0 Or CStr(position) = CStr(index) Then
                    Set found = New ModuleMember
                    found.Name = Module.HeaderName(line)
                    found.CodeLocation = line
                    found.Type = 1
                    If Module.HeaderKind(line) <> vbext_pk_Proc Then found.Type = 2
                    Set Item = found
                    Exit Function
                End If
            End If
        Next
        Err.Raise NoSuchThing, "Item", "there is no such member"
    End Function
End Class

Class CodeModule
    Public Parent
    Public CountOfCalls
    Private lines_

    Private Sub Class_Initialize
        lines_ = Array()
    End Sub

    Public Property Get Text
        Text = Joined(lines_, vbCrLf)
    End Property

    Public Property Let Text(all)
        lines_ = Split(all, vbCrLf)
    End Property

    Public Property Get CountOfLines
        CountOfLines = UBound(lines_) + 1
    End Property

    Public Function Lines(startLine, count)
        Dim i, all
        CountOfCalls = CountOfCalls + 1
        CheckRange startLine, count
        all = ""
        For i = startLine To startLine + count - 1
            If i > startLine Then all = all & vbCrLf
            all = all & lines_(i - 1)
        Next
        Lines = all
    End Function

    Public Sub ReplaceLine(line, text)
        CountOfCalls = CountOfCalls + 1
        CheckRange line, 1
        lines_(line - 1) = text
        lines_ = Split(Joined(lines_, vbCrLf), vbCrLf)
    End Sub

    Public Sub InsertLines(line, text)
        Dim i, all
        CountOfCalls = CountOfCalls + 1
        If line > CountOfLines Then
            ReDim Preserve lines_(CountOfLines)
            lines_(UBound(lines_)) = text
        Else
            CheckRange line, 1
            lines_(line - 1) = text & vbCrLf & lines_(line - 1)
        End If
        lines_ = Split(Joined(lines_, vbCrLf), vbCrLf)
    End Sub

    Public Sub DeleteLines(startLine, count)
        Dim i
        CountOfCalls = CountOfCalls + 1
        CheckRange startLine, count
        For i = startLine - 1 To UBound(lines_) - count
            lines_(i) = lines_(i + count)
        Next
        If UBound(lines_) - count < 0 Then
            lines_ = Array()
        Else
            ReDim Preserve lines_(UBound(lines_) - count)
        End If
    End Sub

    Public Property Get CountOfDeclarationLines
        Dim line, last
        last = 0
        For line = 1 To CountOfLines
            If HeaderName(line) <> "" Then Exit For
            If Trim(lines_(line - 1)) <> "" And Left(LTrim(lines_(line - 1)), 1) <> "'" Then last = line
        Next
        CountOfDeclarationLines = last
    End Property

    Public Property Get Members
        Set Members = New ModuleMembers
        Set Members.Module = Me
    End Property

    Public Function ProcBodyLine(name, kind)
        Dim line
        For line = 1 To CountOfLines
            If StrComp(HeaderName(line), name, vbTextCompare) = 0 And HeaderKind(line) = kind Then
                ProcBodyLine = line
                Exit Function
            End If
        Next
        Err.Raise NoSuchThing, "ProcBodyLine", "there is no such procedure"
    End Function

    Public Function ProcStartLine(name, kind)
        Dim line
        For line = ProcBodyLine(name, kind) - 1 To 1 Step -1
            If IsClosing(line) Then Exit For
        Next
        If line < CountOfDeclarationLines Then line = CountOfDeclarationLines
        ProcStartLine = line + 1
    End Function

    Public Function ProcCountLines(name, kind)
        Dim line
        line = ProcBodyLine(name, kind)
        Do Until IsClosing(line)
            line = line + 1
        Loop
        ProcCountLines = line - ProcStartLine(name, kind) + 1
    End Function

    Public Function ProcOfLine(line, ByRef kind)
        Dim header, itsKind
        CheckRange line, 1
        ProcOfLine = ""
        For header = 1 To CountOfLines
            If HeaderName(header) <> "" Then
                itsKind = HeaderKind(header)
                If line >= ProcStartLine(HeaderName(header), itsKind) And line < ProcStartLine(HeaderName(header), _
                        itsKind) + ProcCountLines(HeaderName(header), itsKind) Then
                    ProcOfLine = HeaderName(header)
                    kind = itsKind
                    Exit Function
                End If
            End If
        Next
    End Function

    Public Function Find(target, ByRef startLine, ByRef startColumn, ByRef endLine, ByRef endColumn, wholeWord, _
            matchCase, patternSearch)
        Dim line, column, last, how
        CountOfCalls = CountOfCalls + 1
        Find = False
        how = vbTextCompare
        If matchCase Then how = vbBinaryCompare
        last = CountOfLines
        If endLine > startLine Then last = endLine
        column = startColumn
        If column < 1 Then column = 1
        For line = startLine To last
            If line >= 1 And line <= CountOfLines Then
                column = FoundColumn(lines_(line - 1), target, column, wholeWord, how)
                If column > 0 Then
                    startLine = line
                    startColumn = column
                    endLine = line
                    endColumn = column + Len(target)
                    Find = True
                    Exit Function
                End If
            End If
            column = 1
        Next
    End Function

    ' The name that a header line gives; "" for other lines.
    Public Function HeaderName(line)
        Dim words, i
        HeaderName = ""
        words = Split(Trim(Replace(lines_(line - 1), "(", " (")), " ")
        For i = 0 To UBound(words) - 1
            Select Case words(i)
                Case "Public", "Private", "Friend", "Static"
                Case "Sub", "Function"
                    HeaderName = words(i + 1)
                    Exit Function
                Case "Property"
                    HeaderName = words(i + 2)
                    Exit Function
                Case Else
                    Exit Function
            End Select
        Next
    End Function

    Public Function HeaderKind(line)
        HeaderKind = vbext_pk_Proc
        If InStr(lines_(line - 1), "Property Let") > 0 Then HeaderKind = vbext_pk_Let
        If InStr(lines_(line - 1), "Property Set") > 0 Then HeaderKind = vbext_pk_Set
        If InStr(lines_(line - 1), "Property Get") > 0 Then HeaderKind = vbext_pk_Get
    End Function

    Private Function IsClosing(line)
        IsClosing = InStr("|End Sub|End Function|End Property|", "|" & Trim(lines_(line - 1)) & "|") > 0
    End Function

    Private Function FoundColumn(text, target, column, wholeWord, how)
        Dim place
        place = column
        Do
            place = InStr(place, text, target, how)
            If place = 0 Then Exit Do
            If Not wholeWord Then Exit Do
            If Not IsWordAt(text, place - 1) And Not IsWordAt(text, place + Len(target)) Then Exit Do
            place = place + 1
        Loop
        FoundColumn = place
    End Function

    Private Function IsWordAt(text, place)
        IsWordAt = False
        If place >= 1 And place <= Len(text) Then
            IsWordAt = InStr(1, "abcdefghijklmnopqrstuvwxyz0123456789_", Mid(text, place, 1), vbTextCompare) > 0
        End If
    End Function

    Private Sub CheckRange(startLine, count)
        If startLine < 1 Or count < 0 Or startLine + count - 1 > CountOfLines Then
            Err.Raise NoSuchThing, "CodeModule", "there is no such line"
        End If
    End Sub
End Class

Class CodePane
    Public CodeModule
    Public TopLine
    Public CountOfVisibleLines
    Private startLine_
    Private startColumn_
    Private endLine_
    Private endColumn_

    Public Sub SetSelection(startLine, startColumn, endLine, endColumn)
        startLine_ = startLine
        startColumn_ = startColumn
        endLine_ = endLine
        endColumn_ = endColumn
    End Sub

    Public Sub GetSelection(ByRef startLine, ByRef startColumn, ByRef endLine, ByRef endColumn)
        startLine = startLine_
        startColumn = startColumn_
        endLine = endLine_
        endColumn = endColumn_
    End Sub
End Class

Class FormControl
    Public ClassName
End Class

Class Designer
    Public VBControls
End Class

Class VBComponent
    Public Name
    Public Type
    Public CodeModule
    Public Designer
End Class

Class VBProject
    Public Name
    Public VBComponents
End Class

Class VBE
    Public VBProjects
    Public ActiveVBProject
    Public ActiveCodePane
End Class

Function NewComponent(name, itsType, text)
    Dim component
    Set component = New VBComponent
    component.Name = name
    component.Type = itsType
    Set component.CodeModule = New CodeModule
    Set component.CodeModule.Parent = component
    component.CodeModule.Text = text
    Set component.Designer = Nothing
    Set NewComponent = component
End Function

Function NewProject(name)
    Set NewProject = New VBProject
    NewProject.Name = name
    Set NewProject.VBComponents = New NamedThings
End Function

Function NewCodePane(module)
    Set NewCodePane = New CodePane
    Set NewCodePane.CodeModule = module
    NewCodePane.TopLine = 1
    NewCodePane.CountOfVisibleLines = 25
    NewCodePane.SetSelection 1, 1, 1, 1
End Function
