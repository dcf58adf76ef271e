' krz aperture set: gives one track sizes of the user's choice.
#Include "changes.bas"
#Include "apertures.bas"

Try
  Dim change As New MovieChange(Args(0))
  Dim t As QTTrackKRZ = SelectTrack(change.Target, Args(1))
  Dim given As Integer
  For Each name As String In Split(kApertureNames)
    If Not CommandLine.Has(name) Then Continue
    Dim width As Double, height As Double
    ParseSize(name, width, height)
    SetTrackAperture(t.TrackHandle, ApertureCode(name), width, height)
    given = given + 1
  Next
  If given = 0 Then Raise New UsageError("say which size: --clean WxH, --production WxH, --encoded WxH")
  change.Finish
Catch e As UsageError
  Fail(e.Message, 2)
Catch e As IOException
  Fail(OfFile(Args(0), e.Message), 1)
End Try

Sub ParseSize(name As String, ByRef width As Double, ByRef height As Double)
  Dim size As New RegEx("^(\d+(?:\.\d*)?)x(\d+(?:\.\d*)?)$")
  Dim found As RegExMatch = size.Search(Lowercase(CommandLine.Value(name)))
  If found Is Nil Then Raise New UsageError("--" + name + " " + CommandLine.Value(name) + ": a size is 704x480")
  width = Val(found.SubExpression(1))
  height = Val(found.SubExpression(2))
  If width > 32767 Or height > 32767 Then Raise New UsageError("--" + name + ": a size is 32767 at most")
End Sub
