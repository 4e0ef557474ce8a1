Attribute VB_Name = "modTexts"
Option Explicit

' Texte der Rechnung in den Sprachen der Kundschaft. Größen in Punkt, Beträge in €.

Public Enum ELanguage
    laGerman
    laFrench
    laSpanish
End Enum

Public Function InvoiceTitle(ByVal eLanguage As ELanguage) As String
    Select Case eLanguage
        Case laGerman: InvoiceTitle = "Rechnung für gelieferte Waren"
        Case laFrench: InvoiceTitle = "Facture – pièces détachées"
        Case laSpanish: InvoiceTitle = "Factura del año"
    End Select
End Function

' Der Gruß am Ende; ein Apostroph wie in « l'été » ist kein Kommentar.
Public Function Greeting(ByVal eLanguage As ELanguage, ByVal strName As String) As String
    Dim strGruß As String
    If eLanguage = laGerman Then
        strGruß = "Mit freundlichen Grüßen: " & strName
    ElseIf eLanguage = laFrench Then
        strGruß = "Profitez de l'été, à bientôt – " & strName
    Else
        strGruß = "¡Hasta mañana, señor " & strName & "!"   ' höflich genug
    End If
    Greeting = strGruß
End Function

Public Function MoneyText(ByVal curValue As Currency) As String
    ' „1.234,50 €“ mit geschütztem Leerzeichen vor dem Zeichen
    MoneyText = Format$(curValue, "#,##0.00") & " €"
    MoneyText = Replace$(MoneyText, "ß", "ss"): MoneyText = Replace$(MoneyText, "œ", "oe")
Prüfung:
    If Len(MoneyText) > 20 Then MoneyText = "…"
End Function