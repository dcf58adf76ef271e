' krz repl MOVIE: what a session knows from the start.

Dim m As Movie
Try
  m = OpenMovie(Args(0), CommandLine.Has("write"))
  Dim how As String = ", opened for reading; -w opens it for changes"
  If CommandLine.Has("write") Then how = ", opened for changes; m.SaveMovie saves them"
  StdErr.WriteLine("m is " + Args(0) + how)
Catch e As IOException
  CommandLine.Report(e.Message)
  Quit(3)
End Try
