' krz edit scale: plays a range in another duration, slower or faster.
#Include "changes.bas"
#Include "segments.bas"

Try
  Dim change As New MovieChange(Args(0))
  Dim editor As New SegmentEditor(change.Target)
  Dim start As Integer, finish As Integer
  ParseRange(Args(1), change.Target, start, finish)
  editor.Scale(start, finish - start, ParseTime(Args(2), change.Target))
  Say("now " + ClockOf(editor.Length, change.Target) + " long")
  change.Finish
Catch e As UsageError
  Fail(e.Message, 2)
End Try
