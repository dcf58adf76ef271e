' The sizes of a track in the aperture modes.
#Include "messages.bas"

Const kApertureNames = "clean production encoded"

' The code of a mode by its name: "clea" for clean.
Function ApertureCode(name As String) As String
  Return Left(name, 4)
End Function

' "704x480", with fractions where there are.
Function ApertureText(t As QTTrackKRZ, mode As String) As String
  Dim width As Double, height As Double
  If Not TrackAperture(t.TrackHandle, mode, width, height) Then Return "-"
  Return Format(width, "0.####") + "x" + Format(height, "0.####")
End Function

' The three sizes of a track; Nil when it has none.
Function AperturesDocument(t As QTTrackKRZ) As Variant
  Dim width As Double, height As Double
  If Not TrackAperture(t.TrackHandle, "clea", width, height) Then Return Nil
  Dim document As New JSONItem
  For Each name As String In Split(kApertureNames)
    If Not TrackAperture(t.TrackHandle, ApertureCode(name), width, height) Then Continue
    Dim size As New JSONItem
    size.Value("width") = width
    size.Value("height") = height
    document.Value(name) = size
  Next
  Return document
End Function

' Ends the command unless the status of a call is 0.
Sub CheckStatus(status As Integer)
  If status <> 0 Then Fail(OfFile(Args(0), MovieFailure + " (error " + Str(status) + ")"), 1)
End Sub
