' krz commit: makes the last save final.
#Include "messages.bas"

Try
  Dim overwritten As Int64 = CommitSaves(Args(0))
  If overwritten = 0 Then Say("nothing was kept for undo") Else Say("overwrote " + Counted(overwritten, "byte") + " that were kept for undo")
Catch e As IOException
  Fail(e.Message, 3)
End Try
