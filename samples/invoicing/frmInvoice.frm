VERSION 5.00
Begin VB.Form frmInvoice 
   BorderStyle     =   1  'Fixed Single
   Caption         =   "Invoice"
   ClientHeight    =   5760
   ClientLeft      =   150
   ClientTop       =   840
   ClientWidth     =   8895
   BeginProperty Font 
      Name            =   "Tahoma"
      Size            =   8.25
      Charset         =   0
      Weight          =   400
      Underline       =   0   'False
      Italic          =   0   'False
      Strikethrough   =   0   'False
   EndProperty
   LinkTopic       =   "Form1"
   MaxButton       =   0   'False
   ScaleHeight     =   5760
   ScaleWidth      =   8895
   StartUpPosition =   3  'Windows Default
   Begin VB.Timer tmrClock 
      Interval        =   1000
      Left            =   8280
      Top             =   120
   End
   Begin VB.Frame fraAddress 
      Caption         =   "&Customer"
      Height          =   1575
      Left            =   120
      TabIndex        =   0
      Top             =   120
      Width           =   4335
      Begin VB.TextBox txtAddress 
         Height          =   315
         Index           =   0
         Left            =   120
         TabIndex        =   1
         Top             =   360
         Width           =   4095
      End
      Begin VB.TextBox txtAddress 
         Height          =   315
         Index           =   1
         Left            =   120
         TabIndex        =   2
         Top             =   720
         Width           =   4095
      End
      Begin VB.TextBox txtAddress 
         Height          =   315
         Index           =   2
         Left            =   120
         TabIndex        =   3
         Text            =   "Begin the town here"
         Top             =   1080
         Width           =   4095
      End
   End
   Begin VB.ComboBox cboVat 
      Height          =   315
      ItemData        =   "frmInvoice.frx":0000
      Left            =   4680
      List            =   "frmInvoice.frx":000E
      Style           =   2  'Dropdown List
      TabIndex        =   4
      Top             =   480
      Width           =   2055
   End
   Begin VB.ListBox lstLines 
      BeginProperty Font 
         Name            =   "Courier New"
         Size            =   9
         Charset         =   0
         Weight          =   400
         Underline       =   0   'False
         Italic          =   0   'False
         Strikethrough   =   0   'False
      EndProperty
      Height          =   2985
      Left            =   120
      TabIndex        =   5
      Top             =   1920
      Width           =   8655
   End
   Begin VB.CommandButton cmdAction 
      Caption         =   "&Add"
      Height          =   375
      Index           =   0
      Left            =   5160
      TabIndex        =   6
      Top             =   5160
      Width           =   1095
   End
   Begin VB.CommandButton cmdAction 
      Caption         =   "&Post"
      Height          =   375
      Index           =   1
      Left            =   6360
      TabIndex        =   7
      Top             =   5160
      Width           =   1095
   End
   Begin VB.CommandButton cmdAction 
      Cancel          =   -1  'True
      Caption         =   "Close"
      Height          =   375
      Index           =   2
      Left            =   7560
      TabIndex        =   8
      Top             =   5160
      Width           =   1095
   End
   Begin VB.Label lblTotal 
      Alignment       =   1  'Right Justify
      Caption         =   "0.00"
      Height          =   255
      Left            =   120
      TabIndex        =   9
      Top             =   5220
      Width           =   2055
   End
   Begin VB.Menu mnuFile 
      Caption         =   "&File"
      Begin VB.Menu mnuFileItem 
         Caption         =   "&New"
         Index           =   0
         Shortcut        =   ^N
      End
      Begin VB.Menu mnuFileItem 
         Caption         =   "&Print..."
         Index           =   1
         Shortcut        =   ^P
      End
      Begin VB.Menu mnuFileItem 
         Caption         =   "-"
         Index           =   2
      End
      Begin VB.Menu mnuFileItem 
         Caption         =   "E&xit"
         Index           =   3
      End
   End
End
Attribute VB_Name = "frmInvoice"
Attribute VB_GlobalNameSpace = False
Attribute VB_Creatable = False
Attribute VB_PredeclaredId = True
Attribute VB_Exposed = False
Option Explicit

Private WithEvents mobjInvoice As CInvoice
Attribute mobjInvoice.VB_VarHelpID = -1
Private mblnDirty As Boolean

Private Sub Form_Load()
    Set mobjInvoice = New CInvoice
    cboVat.ListIndex = 0
    Me.Caption = "Invoice: " & gstrCompany
    ShowTotal
End Sub

Private Sub Form_QueryUnload(Cancel As Integer, UnloadMode As Integer)
    If Not mblnDirty Then Exit Sub
    Select Case MsgBox("Save the invoice?" & vbCrLf & "It isn't posted yet.", _
                       vbYesNoCancel + vbQuestion, _
                       Me.Caption)
        Case vbYes
            mobjInvoice.Post
        Case vbCancel
            Cancel = True
    End Select
End Sub

' One handler for the three buttons of the control array.
Private Sub cmdAction_Click(Index As Integer)
    Select Case Index
    
        ' The order is that of the tab indexes.
        Case 0
            AskForLine
        Case 1
            mobjInvoice.Customer = txtAddress(0).Text
            mobjInvoice.Post: mblnDirty = False
        Case Else: Unload Me
    End Select
    ShowTotal
End Sub

Private Sub mnuFileItem_Click(Index As Integer)
    Select Case Index
    Case 0: Set mobjInvoice = New CInvoice: lstLines.Clear
    Case 1: PrintInvoice
    Case 3: Unload Me
    End Select
End Sub

Private Sub txtAddress_Change(Index As Integer): mblnDirty = True: End Sub

Private Sub txtAddress_KeyPress(Index As Integer, KeyAscii As Integer)
    If KeyAscii = vbKeyReturn And Index < txtAddress.UBound Then
        KeyAscii = 0: txtAddress(Index + 1).SetFocus
    End If
End Sub

Private Sub mobjInvoice_LineAdded(ByVal strArticle As String, ByVal curAmount As Currency)
    lstLines.AddItem strArticle & ": " & MoneyText(curAmount)
    mblnDirty = True
End Sub

Private Sub mobjInvoice_Posted(ByVal lngNumber As Long)
    Trace "posted: " & lngNumber
End Sub

Private Sub AskForLine()
    Dim strArticle As String, strQuantity As String
    On Error GoTo Failed
Again:
    strArticle = InputBox("Article:")
    If Len(strArticle) = 0 Then Exit Sub
    strQuantity = InputBox("Quantity of '" & strArticle & "':", , "1")
    If Not IsNumeric(strQuantity) Then GoTo Again
    mobjInvoice.AddLine strArticle, CCur(strQuantity), PriceOf(strArticle), cboVat.Text
    Exit Sub
Failed:
    MsgBox Err.Description, vbExclamation: Resume Again
End Sub

Private Function PriceOf(strArticle As String) As Currency
    ' No price list yet: a price for each letter.
    PriceOf = Len(strArticle) * 1.25
End Function

Private Sub ShowTotal()
    lblTotal.Caption = MoneyText(mobjInvoice.Total)
End Sub

Private Sub PrintInvoice()
    Dim i As Integer
    On Error Resume Next
    Printer.FontName = "Courier New"
    Printer.Print InvoiceTitle(laGerman)
    Printer.Print String$(60, "=")
    For i = 0 To lstLines.ListCount - 1
#If TRACING Then
        Trace "prints line " & i
#End If
        Printer.Print lstLines.List(i)
        If i Mod 40 = 39 Then Printer.NewPage
    Next i
    Printer.Print Greeting(laFrench, gstrCompany)
    Printer.EndDoc
End Sub

Private Sub tmrClock_Timer()
    Static intTicks As Integer
    intTicks = intTicks + 1: If intTicks Mod 60 = 0 Then gdtmToday = Date
End Sub
