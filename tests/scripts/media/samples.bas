' Samples are read by media time, alone or several that are alike at once.
Dim t As QTTrackKRZ = OpenMovie(TestMovie("chapters")).GetTrackIndexKRZ(2)
Dim data As MemoryBlock, description As MemoryBlock
Dim duration As Integer, index As Integer, count As Integer, flags As Integer
Dim time As Integer = 0
While t.GetMediaSample(data, time, duration, description, index, 1, count, flags)
  data.LittleEndian = False
  Print time, data.StringValue(2, data.UInt16Value(0)), index, count, flags, description.StringValue(4, 4)
  ' expect: 0 One 1 1 0 text
  ' expect: 1200 Two 1 1 0 text
  ' expect: 3000 Three 1 1 0 text
  time = time + duration
Wend
Print t.Lasterror, data Is Nil, description Is Nil, count, duration, time = t.Duration   ' expect: -2032 True True 0 0 True

' What is not there leaves the blocks empty.
time = -1
count = 5
Print t.GetMediaSample(data, time, duration, description, index, 1, count, flags), time, count, t.Lasterror   ' expect: False -1 0 -2032
Dim none As New QTTrackKRZ
index = 7
Print none.GetMediaSample(data, time, duration, description, index, 1, count, flags), index, none.Lasterror   ' expect: False 7 -1

' Uncompressed sound comes a chunk at a time.
t = OpenMovie(TestMovie("two-tracks")).GetSoundTrackKRZ(1)
time = 5
Print t.GetMediaSample(data, time, duration, description, index, 0, count, flags), time, duration, count, data.Size   ' expect: True 5 1 44095 176380
Print t.GetMediaSample(data, time, duration, description, index, 3, count, flags), time, count, data.Size   ' expect: True 5 3 12

' Edits of media may begin once at a time.
Dim movie As Movie = NewMovie(600)
Print movie.TimeScale, movie.Duration, "[" + movie.Path + "]", movie.TrackCountKRZ   ' expect: 600 0 [] 0
none.BeginMediaEdits
Print none.Lasterror   ' expect: -1
none.Lasterror = 7
none.EndMediaEdits
Print none.Lasterror   ' expect: -1
t.BeginMediaEdits
Print t.Lasterror   ' expect: 0
t.BeginMediaEdits
Print t.Lasterror   ' expect: -2044
t.EndMediaEdits
t.EndMediaEdits
Print t.Lasterror   ' expect: 0
Try
  movie = NewMovie(0)
Catch e As IOException
  Print e.ErrorNumber   ' expect: -50
End Try
