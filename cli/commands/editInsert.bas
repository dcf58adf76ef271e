' krz edit insert: shows a range of the movie again at another time, or a range of another movie.
#Include "changes.bas"
#Include "segments.bas"

Sub RepeatRange(change As MovieChange, editor As SegmentEditor)
  If Args.Count <> 3 Then Raise New UsageError("say where to insert and which range: FILE TIME RANGE, or FILE OTHER --at TIME")
  Dim start As Integer, finish As Integer
  ParseRange(Args(2), change.Target, start, finish)
  editor.Repeat(start, finish - start, ParseTime(Args(1), change.Target))
End Sub

Sub InsertOther(change As MovieChange, editor As SegmentEditor)
  If Args.Count <> 2 Then Raise New UsageError("with --at, give the two movies: FILE OTHER --at TIME")
  Dim other As Movie
  Try
    other = OpenMovie(Args(1))
  Catch e As IOException
    Fail(e.Message, 3)
  End Try
  Dim start As Integer = 0, finish As Integer = other.Duration
  If CommandLine.Has("from") Then start = ParseTime(CommandLine.Value("from"), other)
  If CommandLine.Has("to") Then finish = ParseTime(CommandLine.Value("to"), other)
  If finish > other.Duration Then finish = other.Duration
  If finish <= start Then Raise New UsageError("nothing of " + Args(1) + " lies between --from and --to; it ends at " + ClockOf(other.Duration, other))
  ' A new file takes all media data anyway; in its own file the movie must get a copy to stand by itself.
  Dim copies As Boolean = Not CommandLine.Has("output")
  editor.Take(other, start, finish - start, ParseTime(CommandLine.Value("at"), change.Target), copies)
End Sub

Try
  Dim change As New MovieChange(Args(0))
  Dim editor As New SegmentEditor(change.Target)
  If CommandLine.Has("at") Then
    InsertOther(change, editor)
  Else
    If CommandLine.Has("from") Or CommandLine.Has("to") Then Raise New UsageError("--from and --to go with --at and another movie")
    RepeatRange(change, editor)
  End If
  Say("now " + ClockOf(editor.Length, change.Target) + " long")
  change.Finish
Catch e As UsageError
  Fail(e.Message, 2)
End Try
