' krz clip clear: shows tracks whole again.
#Include "changes.bas"

Try
  Dim change As New MovieChange(Args(0))
  For Each t As QTTrackKRZ In SelectTracks(change.Target, Args(1))
    t.TrackClipMask = Nil
    If t.Lasterror <> 0 Then Fail("track " + Str(t.TrackID) + " stays as it is: " + MovieFailure, 1)
  Next
  change.Finish
Catch e As UsageError
  Fail(e.Message, 2)
End Try
