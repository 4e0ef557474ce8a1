Attribute VB_Name = "modTypes"
Option Explicit

' Types and constants that the whole application shares. There is no procedure here.

Public Const VAT_FULL As Double = 0.19
Public Const VAT_REDUCED As Double = 0.07: Public Const VAT_NONE As Double = 0
Public Const MAX_LINES = 40

Public Enum EInvoiceState
    isDraft = 0
    isPosted = 1
    isPaid = 2
    isCancelled = 9
End Enum

Public Type TInvoiceLine
    Article As String
    Quantity As Currency
    UnitPrice As Currency
    VatRate As Double
End Type

Public Declare Sub BeepTone Lib "tones.dll" Alias "Tone" (ByVal dwFreq As Long, ByVal dwDuration As Long)
Public gstrCompany As String, gdtmToday As Date
