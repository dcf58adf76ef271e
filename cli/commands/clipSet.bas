' krz clip set: cuts tracks to the dark pixels of a PNG.
#Include "changes.bas"

Dim mask As Picture
Try
  mask = Picture.Open(Args(2))
Catch e As IOException
  Fail(OfFile(Args(2), e.Message), 3)
Catch e As UnsupportedFormatException
  Fail(OfFile(Args(2), e.Message), 3)
End Try
Try
  Dim change As New MovieChange(Args(0))
  For Each t As QTTrackKRZ In SelectTracks(change.Target, Args(1))
    Cut(t)
  Next
  change.Finish
Catch e As UsageError
  Fail(e.Message, 2)
End Try

Sub Cut(t As QTTrackKRZ)
  Dim name As String = "track " + Str(t.TrackID)
  If t.Width < 1 Or t.Height < 1 Then Raise New UsageError(name + " (" + t.MediaType + ") shows no picture that could be cut")
  If (mask.Width <> t.Width Or mask.Height <> t.Height) And Not CommandLine.Has("quiet") Then CommandLine.Report("note: the mask is " + Str(mask.Width) + "x" + Str(mask.Height) + ", " + name + " " + Str(t.Width) + "x" + Str(t.Height) + "; what the mask does not cover is cut away")
  t.TrackClipMask = mask
  If t.Lasterror <> 0 Then Fail(name + " cannot be cut: " + MovieFailure, 1)
  ' Where no region can be made of a mask, the module leaves the track uncut.
  If ClipRegion(t.TrackHandle) <> "" Then Return
  If System.DrawingProblem <> "" Then Fail("no region can be made of " + Args(2) + ": " + System.DrawingProblem, 1)
  Fail("no region can be made of " + Args(2) + ": it has more edges than 64 KiB hold; take a simpler mask", 1)
End Sub
