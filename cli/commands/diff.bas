' krz diff: in what two movies differ, structurally.
#Include "messages.bas"
#Include "times.bas"
#Include "differences.bas"

Dim lines() As String
Try
  Dim before As Movie = OpenMovie(Args(0))
  Dim after As Movie = OpenMovie(Args(1))
  lines = Differences(before, after)
  AddSampleDifferences(lines, before, after)
Catch e As IOException
  Fail(e.Message, 3)
End Try
For Each line As String In lines
  Print line
Next
If lines.Count > 0 Then Quit(1)
Say("no difference in what is compared")

' Tracks that differ in nothing else may still have other samples.
Sub AddSampleDifferences(lines() As String, before As Movie, after As Movie)
  If Not CommandLine.Has("samples") Then Return
  For i As Integer = 1 To before.TrackCountKRZ
    Dim t As QTTrackKRZ = before.GetTrackIndexKRZ(i)
    Dim other As QTTrackKRZ = after.GetTrackIDKRZ(t.TrackID)
    If other Is Nil Then Continue
    Note(lines, TrackTitle(t) + ": sample data", SampleDigest(t.TrackHandle), SampleDigest(other.TrackHandle))
  Next
End Sub
