' krz refs prune: takes out the references that lead to no track.
#Include "changes.bas"

Dim change As New MovieChange(Args(0))
Dim taken As Integer
For i As Integer = 1 To change.Target.TrackCountKRZ
  taken = taken + PruneReferences(change.Target.GetTrackIndexKRZ(i).TrackHandle)
Next
If taken > 0 Then Say(Counted(taken, "reference") + " taken out")
change.Finish
