' Samples that cannot be read give an error code, and those beside them can be read.
Dim m As Movie = OpenMovie(TestMovie("huge-samples"))
Dim data As MemoryBlock, description As MemoryBlock
Dim time, duration, index, count, flags As Integer

' A sample without bytes is there, its description too.
Dim t As QTTrackKRZ = m.GetTrackIndexKRZ(1)
Print t.GetMediaSample(data, time, duration, description, index, 1, count, flags), t.Lasterror   ' expect: False 0
Print data Is Nil, description.StringValue(4, 4), time, duration, index, count                   ' expect: True raw  0 60 1 1
time = 60
Print t.GetMediaSample(data, time, duration, description, index, 9, count, flags), data.Size, data.Byte(4), count   ' expect: True 5 5 1

' A gibibyte that the file does not have is refused before memory is asked for.
t = m.GetTrackIndexKRZ(2)
time = 70
index = 7
Print t.GetMediaSample(data, time, duration, description, index, 1, count, flags), t.Lasterror   ' expect: False -2046
Print data Is Nil, description Is Nil, time, duration, index, count, flags                       ' expect: True True 70 0 7 1 0
Try
  Print ExtractSamples(t.TrackHandle, 1, 1, "huge.bin")
Catch e As IOException
  Print e.ErrorNumber, InStr(e.Message, "sample 1 claims 1073741824 bytes") > 0, GetFolderItem("huge.bin").Exists   ' expect: -2046 True False
End Try

' Description 9 is missing; without it the sample is no use.
t = m.GetTrackIndexKRZ(3)
time = 0
Print t.GetMediaSample(data, time, duration, description, index, 1, count, flags), t.Lasterror   ' expect: True 0
time = 60
Print t.GetMediaSample(data, time, duration, description, index, 1, count, flags), t.Lasterror, data Is Nil   ' expect: False -2039 True

' Limits that make no sense.
Print t.GetMediaSample(data, time, duration, description, index, -1, count, flags), t.Lasterror   ' expect: False -50
For Each last As Integer In Array(0, 11, -1)
  Try
    Print ExtractSamples(m.GetTrackIndexKRZ(1).TrackHandle, 1, last, "-")
  Catch e As IOException
    Print e.ErrorNumber
  End Try
  ' expect: -2037
  ' expect: -2037
  ' expect: -2037
Next
Try
  PrintSamples(12345)
Catch e As IOException
  Print e.ErrorNumber
End Try
' expect: -2009
