' krz info: what is in a movie, for people or as JSON.

Dim worst As Integer = 0
Dim documents As New JSONItem("[]")

For i As Integer = 0 To Args.Ubound
  Try
    Dim m As Movie = OpenMovie(Args(i))
    If CommandLine.Has("json") Then
      documents.Append(MovieAsJSON(m, Args(i)))
    Else
      If i > 0 Then Print ""
      ShowMovie(m, Args(i))
    End If
  Catch e As IOException
    StdErr.WriteLine("krz: " + e.Message)
    worst = 3
  End Try
Next

