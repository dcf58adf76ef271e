' krz clip get: what a track is cut to, as a PNG of the track's size.
#Include "messages.bas"
#Include "selectors.bas"

If Not CommandLine.Has("output") Then Fail("say where the mask goes: -o MASK.png", 2)
Dim out As String = CommandLine.Value("output")
If GetFolderItem(out).NativePath = GetFolderItem(Args(0)).NativePath Then Fail(out + " is the movie itself; choose another name", 2)
If GetFolderItem(out).Exists And Not CommandLine.Has("force") Then Fail(out + ": there is a file of that name; -f lets it be replaced", 5)
Dim mask As Picture
Try
  Dim m As Movie = OpenMovie(Args(0))
  Dim t As QTTrackKRZ = SelectTrack(m, Args(1))
  Dim record As String = ClipRegion(t.TrackHandle)
  If record = "?" Then Fail(OfFile(Args(0), MovieFailure), 3)
  If record = "" Then Fail("track " + Str(t.TrackID) + " is not cut; krz clip set cuts it", 1)
  mask = t.TrackClipMask
  If mask Is Nil And (t.Width < 1 Or t.Height < 1) Then Fail("track " + Str(t.TrackID) + " has no size, so there is no mask; krz track set --size gives it one", 1)
  If mask Is Nil Then Fail("the mask cannot be drawn: " + System.DrawingProblem, 1)
Catch e As UsageError
  Fail(e.Message, 2)
Catch e As IOException
  Fail(OfFile(Args(0), e.Message), 3)
End Try
Try
  mask.Save(out)
Catch e As IOException
  Fail(e.Message, 5)
End Try
Say("wrote " + out + " (" + Str(mask.Width) + "x" + Str(mask.Height) + ")")
