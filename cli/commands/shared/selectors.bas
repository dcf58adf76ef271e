' Tracks as people name them: 3 (the third), id=5, video, video:2, sound:1, text:1, tmcd:1, ref:chap, all.

' Every track that the selector names, at least one. Raises UsageError.
Function SelectTracks(m As Movie, selector As String) As QTTrackKRZ()
  Dim found() As QTTrackKRZ
  Dim name As String = NthField(selector, ":", 1)
  Dim number As String = NthField(selector, ":", 2)
  If selector = "all" Then
    For i As Integer = 1 To m.TrackCountKRZ
      found.Append m.GetTrackIndexKRZ(i)
    Next
  ElseIf Left(selector, 3) = "id=" Then
    AddTrack(found, m.GetTrackIDKRZ(Integer(Val(Mid(selector, 4)))))
  ElseIf name = "ref" Then
    AddReferredTracks(found, m, number)
  ElseIf MediaTypeOf(name) <> "" Then
    AddTracksOfType(found, m, MediaTypeOf(name), Integer(Val(number)))
  ElseIf Val(selector) > 0 Then
    AddTrack(found, m.GetTrackIndexKRZ(Integer(Val(selector))))
  Else
    Raise New UsageError("""" + selector + """ names no track; a track is 3, id=5, video, sound:2, text:1, tmcd:1, ref:chap or all")
  End If
  If found.Count = 0 Then Raise New UsageError("no track is """ + selector + """; the movie has " + TrackNames(m))
  Return found
End Function

' The one track that the selector names. Raises UsageError when there are several.
Function SelectTrack(m As Movie, selector As String) As QTTrackKRZ
  Dim found() As QTTrackKRZ = SelectTracks(m, selector)
  If found.Count = 1 Then Return found(0)
  Dim ids() As String
  For Each t As QTTrackKRZ In found
    ids.Append "id=" + Str(t.TrackID)
  Next
  Raise New UsageError("""" + selector + """ names " + Str(found.Count) + " tracks, where one is needed: " + Join(ids, ", "))
End Function

Sub AddTrack(found() As QTTrackKRZ, t As QTTrackKRZ)
  If Not (t Is Nil) Then found.Append t
End Sub

' All of them, or the one of that number among them.
Sub AddTracksOfType(found() As QTTrackKRZ, m As Movie, mediaType As String, number As Integer)
  Dim seen As Integer
  For i As Integer = 1 To m.TrackCountKRZ
    Dim t As QTTrackKRZ = m.GetTrackIndexKRZ(i)
    If t.MediaType <> mediaType Then Continue
    seen = seen + 1
    If number = 0 Or number = seen Then found.Append t
  Next
End Sub

' The tracks that others refer to by that type of reference.
Sub AddReferredTracks(found() As QTTrackKRZ, m As Movie, wanted As String)
  Dim known As New Dictionary
  For i As Integer = 1 To m.TrackCountKRZ
    Dim number As Integer = 1
    Dim type As String, id As Integer
    While TrackReference(m.GetTrackIndexKRZ(i).TrackHandle, number, type, id)
      number = number + 1
      If StrComp(type, wanted, 0) <> 0 Or known.HasKey(id) Then Continue
      known.Value(id) = True
      AddTrack(found, m.GetTrackIDKRZ(id))
    Wend
  Next
End Sub

Function MediaTypeOf(name As String) As String
  Select Case name
  Case "video", "vide"
    Return "vide"
  Case "sound", "audio", "soun"
    Return "soun"
  Case "text", "tmcd", "sbtl", "subt", "meta", "hint", "clcp"
    Return name
  Else
    Return ""
  End Select
End Function

Function TrackNames(m As Movie) As String
  If m.TrackCountKRZ = 0 Then Return "no tracks"
  Dim names() As String
  For i As Integer = 1 To m.TrackCountKRZ
    names.Append Str(i) + " (" + m.GetTrackIndexKRZ(i).MediaType + ")"
  Next
  Return "tracks " + Join(names, ", ")
End Function
