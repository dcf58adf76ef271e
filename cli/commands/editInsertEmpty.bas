' krz edit insert-empty: puts time in that shows nothing.
#Include "changes.bas"
#Include "segments.bas"

Try
  Dim change As New MovieChange(Args(0))
  Dim editor As New SegmentEditor(change.Target)
  editor.InsertEmpty(ParseTime(Args(1), change.Target), ParseTime(Args(2), change.Target))
  Say("now " + ClockOf(editor.Length, change.Target) + " long")
  change.Finish
Catch e As UsageError
  Fail(e.Message, 2)
End Try
