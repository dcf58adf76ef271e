' krz aperture remove: takes the sizes out.
#Include "changes.bas"

Try
  Dim change As New MovieChange(Args(0))
  If Args.Ubound > 0 Then
    For Each t As QTTrackKRZ In SelectTracks(change.Target, Args(1))
      Check(t.RemoveTrackApertureModeDimensions)
    Next
  Else
    Check(change.Target.RemoveMovieApertureModeDimensionsKRZ)
  End If
  change.Finish
Catch e As UsageError
  Fail(e.Message, 2)
End Try

Sub Check(status As Integer)
  If status <> 0 Then Fail(OfFile(Args(0), MovieFailure + " (error " + Str(status) + ")"), 1)
End Sub
