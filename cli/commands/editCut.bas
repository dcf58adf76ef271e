' krz edit cut: takes ranges out of a movie.
#Include "changes.bas"
#Include "segments.bas"

Try
  Dim change As New MovieChange(Args(0))
  Dim editor As New SegmentEditor(change.Target)
  Dim starts() As Integer, ends() As Integer
  For i As Integer = 1 To Args.LastIndex
    Dim start As Integer, finish As Integer
    ParseRange(Args(i), change.Target, start, finish)
    starts.Append start
    ends.Append finish
  Next
  ' From the last to the first, so that the times before stay what they are.
  While starts.Count > 0
    Dim last As Integer = 0
    For i As Integer = 1 To starts.LastIndex
      If starts(i) > starts(last) Then last = i
    Next
    For i As Integer = 0 To starts.LastIndex
      If i <> last And ends(i) > starts(last) Then Raise New UsageError("the ranges overlap")
    Next
    editor.Remove(starts(last), ends(last) - starts(last))
    starts.RemoveAt(last)
    ends.RemoveAt(last)
  Wend
  Say("now " + ClockOf(editor.Length, change.Target) + " long")
  change.Finish
Catch e As UsageError
  Fail(e.Message, 2)
End Try
