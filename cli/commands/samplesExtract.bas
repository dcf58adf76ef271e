' krz samples extract: the bytes of samples, one sample behind the other.
#Include "messages.bas"
#Include "selectors.bas"

If Not CommandLine.Has("output") Then Fail("say where the bytes go: -o OUT, or -o - for standard output", 2)
Dim out As String = CommandLine.Value("output")
If out <> "-" And GetFolderItem(out).NativePath = GetFolderItem(Args(0)).NativePath Then Fail(out + " is the movie itself; choose another name", 2)
Try
  Dim m As Movie = OpenMovie(Args(0))
  Dim t As QTTrackKRZ = SelectTrack(m, Args(1))
  Dim count As Integer = t.MediaSampleCount
  Dim first As Integer = 1
  Dim last As Integer = count
  If CommandLine.Has("samples") Then ParseNumbers(CommandLine.Value("samples"), count, first, last)
  If count = 0 Then
    m.Check
    Raise New UsageError("track " + Str(t.TrackID) + " has no samples")
  End If
  Dim bytes As Int64 = ExtractSamples(t.TrackHandle, first, last, out, CommandLine.Has("force"))
  If out <> "-" Then Say("wrote " + Counted(bytes, "byte") + " of samples " + Str(first) + " to " + Str(last) + " to " + out)
Catch e As UsageError
  Fail(e.Message, 2)
Catch e As IOException
  ' What the system refuses is about OUT; what the toolbox refuses is about the movie.
  Dim advice As String
  If e.ErrorNumber = 17 Then advice = "; -f lets it be replaced"
  If e.ErrorNumber > 0 Then Fail(e.Message + advice, 5)
  Fail(OfFile(Args(0), e.Message), 3)
End Try

' "7", "3-9", "3-" and "-9": the samples of a track that has `count`.
Sub ParseNumbers(text As String, count As Integer, ByRef first As Integer, ByRef last As Integer)
  Dim form As New RegEx("^(\d{1,9})?(-)?(\d{1,9})?$")
  Dim found As RegExMatch = form.Search(text)
  If found Is Nil Or text = "" Or text = "-" Then Raise New UsageError("""" + text + """ does not say which samples; write 7, 3-9, 3- or -9")
  Dim place As Integer = InStr(text, "-")
  If place = 0 Then
    first = Integer(Val(text))
    last = first
  Else
    If place > 1 Then first = Integer(Val(Left(text, place - 1)))
    If place < Len(text) Then last = Integer(Val(Mid(text, place + 1)))
  End If
  If first < 1 Or last < first Or last > count Then Raise New UsageError("samples " + text + " are not there; the track has " + Str(count))
End Sub
