' krz save: writes a movie as a new file, movie atom first, that players begin to play at once.
#Include "messages.bas"

If Not CommandLine.Has("output") Then Fail("say with -o OUT where the new file goes", 2)
Dim m As Movie
Try
  m = OpenMovie(Args(0))
Catch e As IOException
  Fail(e.Message, 3)
End Try
Try
  m.SaveAs(CommandLine.Value("output"), CommandLine.Has("force"), CommandLine.Has("used-only"))
  Say("wrote " + CommandLine.Value("output"))
Catch e As IOException
  Fail(e.Message, 5)
End Try
