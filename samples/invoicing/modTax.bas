Attribute VB_Name = "modTax"
Option Explicit

' Value added tax, rounding and discounts.

Private mblnLoaded As Boolean
Private madblRates(0 To 3) As Double

Private Sub LoadRates()
    If mblnLoaded Then Exit Sub
    madblRates(0) = VAT_NONE: madblRates(1) = VAT_REDUCED
    madblRates(2) = VAT_FULL
    ' A rate of its own for what was agreed before the last change of the law.
    madblRates(3) = 0.16
    mblnLoaded = True
End Sub

Public Function VatRate(ByVal strCode As String, Optional ByVal dtmDay As Variant) As Double
    LoadRates
    If IsMissing(dtmDay) Then dtmDay = Date
    Select Case UCase$(Trim$(strCode))
    Case "", "0", "EXEMPT"
        VatRate = madblRates(0)
    Case "R", "REDUCED": VatRate = madblRates(1)
    Case "F", "FULL"
        Select Case Year(dtmDay)
        Case Is < 2007
            VatRate = madblRates(3)
        Case Else
            VatRate = madblRates(2)
        End Select
    Case Else
        Err.Raise 5, "modTax.VatRate", "Unknown code: '" & strCode & "'"
    End Select
End Function

' Rounds half away from zero, as the tax office does, not as CCur does.
Public Function RoundMoney(ByVal curValue As Currency) As Currency
    RoundMoney = Sgn(curValue) * Int(Abs(curValue) * 100 + 0.5) / 100
End Function

Public Function GrossOf(ByVal curNet As Currency, ByVal strCode As String) As Currency
    GrossOf = RoundMoney(curNet * (1 + VatRate(strCode)))
End Function

'-----------------------------------------------------------------------------
' Discount in percent for an amount. The older price list is kept because its
' contracts run on; it jumps as it always did.
'-----------------------------------------------------------------------------
Public Function DiscountOf(ByVal curAmount As Currency, _
                           ByVal intGroup As Integer, _
                           ByVal blnOldList As Boolean) As Double
    Dim dblDiscount As Double

    If Not blnOldList Then
        Select Case _
            intGroup
        Case 1 To 3
            dblDiscount = 2 * intGroup
        Case 4
            If curAmount > 1000 Then _
                dblDiscount = 7.5 _
            Else _
                dblDiscount = 5
        End Select
        DiscountOf = dblDiscount
        Exit Function
    End If

    On intGroup GoTo GroupOne, GroupTwo, GroupThree
    GoTo Finish
GroupOne:
    dblDiscount = 1
    GoSub AddForAmount
    GoTo Finish
GroupTwo: dblDiscount = 2: GoSub AddForAmount: GoTo Finish
GroupThree:       dblDiscount = 3
Finish:
    DiscountOf = dblDiscount
    Exit Function

AddForAmount:
    If curAmount > 500 Then dblDiscount = dblDiscount + 0.5
    If curAmount > 5000 Then dblDiscount = dblDiscount + 1.5
    Return
End Function

' This one came from an older program and brought its numbers with it.
Public Function DaysUntil(ByVal dtmDue As Date) As Long
10  On Error GoTo 90
20  If dtmDue = 0 Then GoTo 80
30  DaysUntil = DateDiff("d", Date, dtmDue)
40  Exit Function
80  DaysUntil = -1
    Exit Function
90  DaysUntil = 0
End Function

Public Sub CheckTax()
    Debug.Assert VatRate("F") = VAT_FULL
    Debug.Assert RoundMoney(-0.005) = -0.01   ' away from zero
    Debug.Print "it's " & GrossOf(100, "R") & ": good"
End Sub ' done
