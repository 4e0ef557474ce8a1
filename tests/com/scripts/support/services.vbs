' The suite's services object, with a code database whose table is a dictionary.
Class TableField
    Public Value
End Class

Class TableFields
    Public Key
    Public Code

    Public Default Function Item(name)
        Select Case name
            Case "Key"
                Set Item = Key
            Case "Code"
                Set Item = Code
            Case Else
                Err.Raise 3265, "Fields", "there is no field of that name"
        End Select
    End Function
End Class

' A table-type recordset: nothing is written before Update.
Class TableRecordset
    Public Table
    Public Fields
    Public NoMatch
    Public IsClosed
    Public Log
    Private index_

    Private Sub Class_Initialize
        Set Fields = New TableFields
        Set Fields.Key = New TableField
        Set Fields.Code = New TableField
        IsClosed = False
        NoMatch = False
        Log = ""
    End Sub

    Public Property Get Index
        Index = index_
    End Property

    Public Property Let Index(name)
        If name <> "Key" Then Err.Raise 3015, "Index", "there is no such index"
        index_ = name
    End Property

    Public Sub Seek(comparison, key)
        If index_ = "" Or comparison <> "=" Then Err.Raise 3019, "Seek", "there is no index to search"
        NoMatch = Not Table.Exists(CLng(key))
        If Not NoMatch Then
            Fields.Key.Value = CLng(key)
            Fields.Code.Value = Table.Item(CLng(key))
        End If
    End Sub

    Public Sub AddNew
        Log = Log & "add "
    End Sub

    Public Sub Edit
        Log = Log & "edit "
    End Sub

    Public Sub Update
        Log = Log & Fields.Key.Value & ";"
        Table.Item(CLng(Fields.Key.Value)) = Fields.Code.Value
    End Sub

    Public Sub Close
        IsClosed = True
    End Sub
End Class

Class CodeDatabase
    Public Table
    Public LastRecordset

    Private Sub Class_Initialize
        Set Table = CreateObject("Scripting.Dictionary")
        Set LastRecordset = Nothing
    End Sub

    Public Function OpenRecordset(name, itsType)
        If name <> "CPBuffers" Or itsType <> 1 Then Err.Raise 3078, "OpenRecordset", "there is no such table"
        Set LastRecordset = New TableRecordset
        Set LastRecordset.Table = Table
        Set OpenRecordset = LastRecordset
    End Function
End Class

Class HostTimer
    Public Log
    Private enabled_

    Public Property Get Enabled
        Enabled = enabled_
    End Property

    Public Property Let Enabled(value)
        enabled_ = value
        Log = Log & CStr(value) & " "
    End Property
End Class

Class HostForm
    Public tmrMain
End Class

Class HistItems
    Public Log

    Public Sub CleanupBackHistory
        Log = Log & "back "
    End Sub

    Public Sub CleanupNextHistory
        Log = Log & "next "
    End Sub

    Public Function HistBackItem(index)
        HistBackItem = ""
    End Function

    Public Function HistNextItem(index)
        HistNextItem = ""
    End Function
End Class

Class ProjectData
    Public HistItems
End Class

Class AddInHost
    Public Opened

    Public Sub OpenHistObject(object, key)
        Opened = Opened & key & " "
    End Sub
End Class

Class Globals
    Public VBE
    Public ComputerName
    Public UserName
    Public CodeDbPath
    Public CodeDb
    Public HostForm
    Public ProjectsData
    Public AddInHost
    Public HistSeparator
    Public HistCurrentKey
    Public HistSelKey
    Public HistSelObject
    Public WindowLog

    Private Sub Class_Initialize
        ComputerName = "WORKBENCH"
        UserName = "ada"
        CodeDbPath = ""
        Set CodeDb = Nothing
        HistSeparator = "|"
        WindowLog = ""
    End Sub

    ' The part before the last separator.
    Public Function TokenBefore(text, separator)
        Dim place
        place = InStrRev(text, separator)
        TokenBefore = ""
        If place > 0 Then TokenBefore = Left(text, place - 1)
    End Function

    Public Sub LoadWindowState(form)
        WindowLog = WindowLog & "load " & form.Name & ";"
    End Sub

    Public Sub SaveWindowState(form)
        WindowLog = WindowLog & "save " & form.Name & ";"
    End Sub
End Class

' An IDE with the project "Shop": the class "Basket" and the form "Counter". The class's window is active.
Function NewServices
    Dim ide, project, form
    Set ide = New VBE
    Set ide.VBProjects = New NamedThings
    Set project = NewProject("Shop")
    ide.VBProjects.Add "Shop", project
    Set ide.ActiveVBProject = project
    project.VBComponents.Add "Basket", NewComponent("Basket", 2, BasketCode)
    Set form = NewComponent("Counter", 5, Lines(Array( _
        "Private Sub cmdPay_Click()", _
        "    Basket.Add 1", _
        "End Sub")))
    Set form.Designer = New Designer
    Set form.Designer.VBControls = New NamedThings
    form.Designer.VBControls.Add "cmdPay", New FormControl
    form.Designer.VBControls.Item("cmdPay").ClassName = "CommandButton"
    project.VBComponents.Add "Counter", form
    Set ide.ActiveCodePane = NewCodePane(project.VBComponents.Item("Basket").CodeModule)

    Set NewServices = New Globals
    Set NewServices.VBE = ide
    Set NewServices.HostForm = New HostForm
    Set NewServices.HostForm.tmrMain = New HostTimer
    Set NewServices.ProjectsData = New NamedThings
    NewServices.ProjectsData.Add "Shop", New ProjectData
    Set NewServices.ProjectsData.Item("Shop").HistItems = New HistItems
    Set NewServices.AddInHost = New AddInHost
End Function

Function BasketCode
    BasketCode = Lines(Array( _
        "Option Explicit", _
        "Private total As Long", _
        "", _
        "Public Sub Add(ByVal amount As Long)", _
        "    total = total + amount", _
        "    If total > 100 Then", _
        "        total = 100", _
        "    End If", _
        "End Sub", _
        "", _
        "' Rounds down.", _
        "Public Function Half() As Long", _
        "    Half = total \ 2", _
        "End Function", _
        "", _
        "Public Property Get Value() As Long", _
        "    Value = total", _
        "End Property", _
        "", _
        "Public Property Let Value(ByVal newValue As Long)", _
        "    total = newValue", _
        "End Property"))
End Function
