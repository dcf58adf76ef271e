' The lists of movies and tracks are saved with them; what a list does not understand survives.
Dim path As String = TestMovie("two-tracks")
Dim m As Movie = OpenMovie(path, True)
Dim u As QTUserDataKRZ = m.UserDataKRZ
Print u.Release, u.Lasterror, u.Handle = m.UserDataKRZ.Handle     ' expect: False 0 True
u.AddText("©nam", 1, 21956, "Žluťoučký kůň")
u.AddData("XYZ!", "anything" + ChrB(0))
Dim t As QTTrackKRZ = m.GetVideoTrackKRZ(1)
Dim tu As QTUserDataKRZ = t.UserData
Print tu.Release, t.Lasterror                     ' expect: False -1
tu.AddData("name", "Main camera")
tu.AddText("©inf", 1, 0, "left")
m.Save
Print u.GetData("XYZ!", 1) = "anything" + ChrB(0), tu.GetText("©inf", 1, 0)   ' expect: True left

m.Close
Dim saved As Movie = OpenMovie(path)
u = saved.UserDataKRZ
Print LenB(u.GetData("©nam", 1)), LenB(u.GetData("XYZ!", 1)), u.GetNextType("©nam"), u.GetNextType("XYZ!") = ""   ' expect: 23 9 XYZ! True
tu = saved.GetVideoTrackKRZ(1).UserData
Print tu.GetText("name", 1, 0), tu.GetText("©inf", 1, 0), tu.CountType("name")   ' expect: Main camera left 1
Print saved.GetSoundTrackKRZ(1).UserData.GetNextType("") = ""        ' expect: True

' Assigning a flattened list to a movie's object leaves the movie's list: the object has one of its own then.
Dim before As Integer = u.Handle
u.BinaryData = tu.BinaryData
Print u.Release, u.Handle <> before, u.CountType("©inf"), saved.UserDataKRZ.CountType("XYZ!")   ' expect: True True 1 1
u.Close
Print saved.UserDataKRZ.CountType("XYZ!")         ' expect: 1

' A list of a movie does not outlive it; it is never disposed by its object, even when told to.
Dim kept As QTUserDataKRZ = saved.UserDataKRZ
kept.Release = True
kept.Close
Print saved.UserDataKRZ.CountType("XYZ!")         ' expect: 1
kept = saved.UserDataKRZ
saved.Close
Print kept.CountType("XYZ!"), "[" + kept.GetText("©nam", 1, 0) + "]", kept.Lasterror   ' expect: 0 [] -50

' A track's copy takes its list along, as it was when it was copied.
Dim w As Movie = OpenMovie(path, True)
Dim original As QTTrackKRZ = w.GetVideoTrackKRZ(1)
original.UserData.AddText("©inf", 1, 1, "gauche")
Dim clone As QTTrackKRZ = original.AddClonedTrackToMovie(w, 1)
original.UserData.RemoveData("©inf", 1)
Print clone.UserData.GetText("©inf", 1, 1), original.UserData.CountType("©inf")   ' expect: gauche 0
Dim lost As New QTTrackKRZ
Print lost.UserData Is Nil, lost.Lasterror        ' expect: True -1
