' Tracks are found by place, by ID and by type, with and without the disabled ones.
Dim m As Movie = OpenMovie(TestMovie("lookup"))
Print m.TrackCountKRZ                                    ' expect: 5

Sub Show(t As QTTrackKRZ)
  If t Is Nil Then
    Print "Nil"
  Else
    Print t.TrackID, t.MediaType, t.TrackEnabled, t.Lasterror
  End If
End Sub

For i As Integer = -1 To 6
  Show m.GetTrackIndexKRZ(i)                             ' expect: Nil
Next                                                     ' expect: Nil
' expect: 70 vide False 0
' expect: 3 soun True 0
' expect: 2000 vide True 0
' expect: 5 soun False 0
' expect: 9 text True 0
' expect: Nil
Show m.GetTrackIndexKRZ(2147483647)                      ' expect: Nil

' An ID is no place.
Show m.GetTrackIDKRZ(2000)                               ' expect: 2000 vide True 0
Show m.GetTrackIDKRZ(5)                                  ' expect: 5 soun False 0
Show m.GetTrackIDKRZ(1)                                  ' expect: Nil
Show m.GetTrackIDKRZ(0)                                  ' expect: Nil
Show m.GetTrackIDKRZ(-70)                                ' expect: Nil

' Places count among the tracks of the type; disabled ones do not count when left out.
Show m.GetVideoTrackKRZ(1)                               ' expect: 70 vide False 0
Show m.GetVideoTrackKRZ(1, False)                        ' expect: 70 vide False 0
Show m.GetVideoTrackKRZ(2)                               ' expect: 2000 vide True 0
Show m.GetVideoTrackKRZ(3)                               ' expect: Nil
Show m.GetVideoTrackKRZ(0)                               ' expect: Nil
Show m.GetVideoTrackKRZ(1, True)                         ' expect: 2000 vide True 0
Show m.GetVideoTrackKRZ(2, True)                         ' expect: Nil
Show m.GetSoundTrackKRZ(1)                               ' expect: 3 soun True 0
Show m.GetSoundTrackKRZ(2)                               ' expect: 5 soun False 0
Show m.GetSoundTrackKRZ(2, True)                         ' expect: Nil
Show m.GetSoundTrackKRZ(-1, True)                        ' expect: Nil

' The same track twice is two objects with one reference.
Dim a As QTTrackKRZ = m.GetTrackIndexKRZ(1)
Dim b As QTTrackKRZ = m.GetTrackIDKRZ(70)
Print a Is b, a.TrackHandle = b.TrackHandle, a.TrackHandle <> 0   ' expect: False True True
Print a.Movie Is m                                       ' expect: True
