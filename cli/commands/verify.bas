' krz verify: whether movies are whole: atoms, tables, references, and every sample inside its file.
#Include "messages.bas"

Dim worst As Integer
For Each path As String In Args
  Try
    Dim found As String = MovieProblems(OpenMovie(path))
    If found = "" Then
      Say(path + ": good")
    Else
      worst = Max(worst, 1)
      Print path + ":"
      For Each problem As String In Split(Trim(found), Chr(10))
        Print "  " + problem
      Next
    End If
  Catch e As IOException
    CommandLine.Report(e.Message)
    worst = 3
  End Try
Next
Quit(worst)
