' krz track delete: takes tracks out of a movie.
#Include "changes.bas"

Try
  Dim change As New MovieChange(Args(0))
  For Each t As QTTrackKRZ In SelectTracks(change.Target, Args(1))
    Say("deleting track " + Str(t.TrackID) + " (" + t.MediaType + ")")
    RemoveTrack(t.TrackHandle)
  Next
  If Not CommandLine.Has("final") And Not CommandLine.Has("dry-run") And CommandLine.Has("in-place") Then
    Say("its media data stays in the file")
  End If
  change.Finish
Catch e As UsageError
  Fail(e.Message, 2)
End Try
