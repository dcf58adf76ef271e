' How every command changes a movie: -i, -o, -f, -n, --backup, --prove, --final, -q.
'
'   Dim change As New MovieChange(Args(0))
'   ... change.Target ...
'   change.Finish
#Include "messages.bas"
#Include "times.bas"
#Include "selectors.bas"
#Include "differences.bas"

Class MovieChange
  Target As Movie
  Private path As String
  Private digests As Dictionary    ' of every track's samples, by ID, when they are to be proved
  Private counts As Dictionary     ' how many samples that were

  ' Opens the movie as the flags say, or ends the command.
  Sub Constructor(path As String)
    Self.path = path
    Dim inPlace As Boolean = CommandLine.Has("in-place")
    If inPlace And CommandLine.Has("output") Then Fail("-i and -o exclude each other", 2)
    If Not inPlace And Not CommandLine.Has("output") And Not CommandLine.Has("dry-run") Then
      Fail("say where the result goes: -i changes " + path + " itself, -o OUT writes a new file, -n only shows what would change", 2)
    End If
    If CommandLine.Has("backup") And Not inPlace Then Fail("--backup goes with -i", 2)
    Try
      Target = OpenMovie(path, inPlace And Not CommandLine.Has("dry-run"))
    Catch e As IOException
      Fail(e.Message, 3)
    End Try
    If CommandLine.Has("prove") Then
      counts = New Dictionary
      For i As Integer = 1 To Target.TrackCountKRZ
        Dim t As QTTrackKRZ = Target.GetTrackIndexKRZ(i)
        counts.Value(t.TrackID) = t.MediaSampleCount
      Next
      digests = SampleDigests(Target)
    End If
  End Sub

  ' Saves, or shows what saving would do. Ends the command when that fails.
  Sub Finish()
    If Not Target.IsModified And Not CommandLine.Has("output") Then
      Say(path + ": nothing to change")
      Return
    End If
    If CommandLine.Has("dry-run") Then
      ShowPlan
      Return
    End If
    Try
      If CommandLine.Has("output") Then SaveNew Else SaveInPlace
    Catch e As IOException
      Fail(e.Message, 5)
    End Try
    If CommandLine.Has("prove") Then Prove
  End Sub

  Private Sub SaveNew()
    Dim output As String = CommandLine.Value("output")
    Target.SaveAs(output, CommandLine.Has("force"))
    Say("wrote " + output)
  End Sub

  Private Sub SaveInPlace()
    If CommandLine.Has("backup") Then
      Dim suffix As String = CommandLine.Value("backup")
      If suffix = "" Then suffix = ".bak"
      GetFolderItem(path).CopyTo(GetFolderItem(path + suffix))
    End If
    Dim bytes As Int64 = Target.BytesToSave
    Target.Save
    Dim text As String = "saved " + path + " (" + Counted(bytes, "byte") + " written"
    If CommandLine.Has("final") Then
      Target.Close
      CommitSaves(path)
      Target = OpenMovie(path)
      Say(text + ", nothing kept for undo)")
    Else
      Say(text + "; krz undo takes it back)")
    End If
  End Sub

  Private Sub ShowPlan()
    Dim lines() As String = Differences(OpenMovie(path), Target)
    For Each line As String In lines
      Print line
    Next
    If lines.Count = 0 Then Print "(no difference in what is compared)"
    Print Counted(Target.BytesToSave(CommandLine.Has("output")), "byte") + " would be written"
  End Sub

  Private Function SampleDigests(m As Movie) As Dictionary
    Dim all As New Dictionary
    For i As Integer = 1 To m.TrackCountKRZ
      Dim t As QTTrackKRZ = m.GetTrackIndexKRZ(i)
      ' Samples that were added stand behind those that were there.
      If counts.HasKey(t.TrackID) Then all.Value(t.TrackID) = SampleDigest(t.TrackHandle, counts.Value(t.TrackID))
    Next
    Return all
  End Function

  Private Sub Prove()
    Dim after As Dictionary = SampleDigests(Target)
    Dim same As Integer
    For Each id As Variant In digests.Keys
      If Not after.HasKey(id) Then Continue
      If after.Value(id) <> digests.Value(id) Then Fail("the samples of track " + String(id) + " are not what they were; krz undo brings the old movie back", 1)
      same = same + 1
    Next
    Say("proved: the samples of " + Counted(same, "track") + " are what they were")
  End Sub
End Class
