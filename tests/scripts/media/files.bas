' The files of a media: which they are, and another in their place, across save and reopen.
' Each SetFile leaves the handle that it made with the toolbox.
' handles-kept: 4
Dim path As String = TestMovie("chapters")
Dim other As String = TestMovie("edited")
Dim m As Movie = OpenMovie(path, True)
Dim t As QTTrackKRZ = m.GetVideoTrackKRZ(1)
Print t.FileCount, t.File(1).NativePath = path           ' expect: 1 True
Print t.File(0) Is Nil, t.File(2) Is Nil, t.Lasterror    ' expect: True True 0
' Indices are cut to 16 bits.
Print t.File(65537).NativePath = path                    ' expect: True

' The samples of both movies lie at the same places of their files.
Print t.SetFile(1, GetFolderItem(other))                 ' expect: 0
Print t.File(1).NativePath = other, m.IsModified         ' expect: True True
m.Save
Dim saved As QTTrackKRZ = OpenMovie(path).GetVideoTrackKRZ(1)
Print saved.File(1).NativePath = other, saved.FileCount  ' expect: True 1
Dim data As MemoryBlock, description As MemoryBlock
Dim time, duration, index, count, flags As Integer
Print saved.GetMediaSample(data, time, duration, description, index, 1, count, flags), saved.Lasterror   ' expect: True 0

' A new file takes the samples over.
m.SaveAs(path + ".whole.mov")
Print m.GetVideoTrackKRZ(1).File(1).NativePath = path + ".whole.mov", MovieProblems(m) = ""   ' expect: True True

' Back to the movie's own file.
m = OpenMovie(path, True)
t = m.GetVideoTrackKRZ(1)
Print t.SetFile(1, GetFolderItem(path)), t.File(1).NativePath = path   ' expect: 0 True
m.Save
Print MovieProblems(OpenMovie(path)) = ""                ' expect: True

' What is not there cannot be a file of a media, nor a number that it does not have.
Print t.SetFile(1, GetFolderItem(path + ".missing"))     ' expect: -1
Print t.SetFile(2, GetFolderItem(other)), t.SetFile(1, Nil), t.Lasterror   ' expect: -2050 -1 0
Dim none As New QTTrackKRZ
Print none.File(1) Is Nil, none.SetFile(1, GetFolderItem(path)), none.FileCount   ' expect: True -1 0

' A file that went away: an error code, and its name where it can be told.
Print t.SetFile(1, GetFolderItem(other))                 ' expect: 0
m.Save
m.Close
GetFolderItem(other).Delete
m = OpenMovie(path)
t = m.GetVideoTrackKRZ(1)
Print t.File(1) Is Nil, t.FileCount                      ' expect: True 1
time = 0
Print t.GetMediaSample(data, time, duration, description, index, 1, count, flags), t.Lasterror   ' expect: False -2000
Print InStr(MovieProblems(m), "edited.mov") > 0          ' expect: True
