' krz track clone: adds a copy of a track that shares its samples.
#Include "changes.bas"

Try
  Dim change As New MovieChange(Args(0))
  Dim source As QTTrackKRZ = SelectTrack(change.Target, Args(1))
  Dim clone As QTTrackKRZ = source.AddClonedTrackToMovie(change.Target, 1)
  If clone Is Nil Then Fail("track " + Str(source.TrackID) + " cannot be cloned (error " + Str(source.Lasterror) + ")", 1)
  Say("track " + Str(clone.TrackID) + " is a clone of track " + Str(source.TrackID))
  change.Finish
Catch e As UsageError
  Fail(e.Message, 2)
End Try
