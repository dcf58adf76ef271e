' A movie without tracks has none to give; a closed movie says that it has nothing to count.
Dim m As Movie = OpenMovie(TestMovie("empty"))
Print m.TrackCountKRZ                                    ' expect: 0
Print m.GetTrackIndexKRZ(1) Is Nil, m.GetTrackIDKRZ(1) Is Nil     ' expect: True True
Print m.GetVideoTrackKRZ(1) Is Nil, m.GetSoundTrackKRZ(1, True) Is Nil   ' expect: True True

Dim closed As Movie = OpenMovie(TestMovie("two-tracks"))
Print closed.TrackCountKRZ                               ' expect: 2
closed.Close
Print closed.TrackCountKRZ                               ' expect: -1
Print closed.GetTrackIndexKRZ(1) Is Nil, closed.GetTrackIDKRZ(1) Is Nil   ' expect: True True
Print closed.GetVideoTrackKRZ(1) Is Nil, closed.GetSoundTrackKRZ(1) Is Nil   ' expect: True True
closed.Close
Print closed.Duration                                    ' expect: 0
Try
  closed = OpenMovie("/nowhere/clip.mov")
Catch e As IOException
  Print e.ErrorNumber, InStr(e.Message, "/nowhere/clip.mov") > 0   ' expect: -43 True
End Try

Dim none As Movie
Try
  Print none.TrackCountKRZ
Catch e As NilObjectException
  Print "Nil"                                            ' expect: Nil
End Try
