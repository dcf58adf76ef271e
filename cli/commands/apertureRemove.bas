' krz aperture remove: takes the sizes out.
#Include "changes.bas"
#Include "apertures.bas"

Try
  Dim change As New MovieChange(Args(0))
  If Args.Ubound > 0 Then
    For Each t As QTTrackKRZ In SelectTracks(change.Target, Args(1))
      CheckStatus(t.RemoveTrackApertureModeDimensions)
    Next
  Else
    CheckStatus(change.Target.RemoveMovieApertureModeDimensionsKRZ)
  End If
  change.Finish
Catch e As UsageError
  Fail(e.Message, 2)
End Try
