' krz timecode remove: takes every timecode track out, with the references to it.
#Include "changes.bas"

Try
  Dim change As New MovieChange(Args(0))
  If Not change.Target.HasTimeCodeTrackKRZ Then Fail(Args(0) + " has no timecode track", 1)
  change.Target.DeleteTimeCodeTracksKRZ
  change.Finish
Catch e As UsageError
  Fail(e.Message, 2)
Catch e As IOException
  Fail(e.Message, 3)
End Try
