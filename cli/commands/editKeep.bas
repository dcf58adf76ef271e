' krz edit keep: leaves nothing of a movie but some ranges, in the order of the movie.
#Include "changes.bas"
#Include "segments.bas"

Try
  Dim change As New MovieChange(Args(0))
  Dim editor As New SegmentEditor(change.Target)
  Dim starts() As Integer, ends() As Integer
  For i As Integer = 1 To Args.LastIndex
    Dim start As Integer, finish As Integer
    ParseRange(Args(i), change.Target, start, finish)
    Dim place As Integer = 0
    While place < starts.Count
      If starts(place) > start Then Exit
      place = place + 1
    Wend
    starts.Insert place, start
    ends.Insert place, finish
  Next
  Dim behind As Integer = editor.Length
  For i As Integer = starts.LastIndex DownTo 0
    If ends(i) > editor.Length Then ends(i) = editor.Length
    If i < starts.LastIndex Then
      If ends(i) > starts(i + 1) Then Raise New UsageError("the ranges overlap")
    End If
    If behind > ends(i) Then editor.Remove(ends(i), behind - ends(i))
    behind = starts(i)
  Next
  If behind > 0 Then editor.Remove(0, behind)
  Say("now " + ClockOf(editor.Length, change.Target) + " long")
  change.Finish
Catch e As UsageError
  Fail(e.Message, 2)
End Try
