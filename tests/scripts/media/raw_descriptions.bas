' A sample description as the file holds it, byte for byte, or Nil and the reason.
Dim t As QTTrackKRZ = OpenMovie(TestMovie("descriptions")).GetVideoTrackKRZ(1)
Print t.MediaSampleDescriptionCount, t.FileCount            ' expect: 2 2

Dim second As MemoryBlock = t.MediaSampleDescriptionRaw(2)
Print t.Lasterror, second.Size                              ' expect: 0 20
second.LittleEndian = False
Print second.Int32Value(0), second.StringValue(4, 4)        ' expect: 20 jpeg
Print second.UInt16Value(14), second.Byte(16), second.Byte(17), second.Byte(18), second.Byte(19)   ' expect: 2 1 2 3 255

Dim first As MemoryBlock = t.MediaSampleDescriptionRaw(1)
first.LittleEndian = False
Print first.Size = first.Int32Value(0), "[" + first.StringValue(4, 4) + "]"   ' expect: True [raw ]
Print first.UInt16Value(32), first.UInt16Value(34)          ' expect: 16 16

' A block is a copy: what is written into it stays there.
second.Byte(16) = 99
Print t.MediaSampleDescriptionRaw(2).Byte(16)               ' expect: 1

For Each index As Integer In Array(0, 3, -1, 2147483647)
  t.Lasterror = 55
  Print t.MediaSampleDescriptionRaw(index) Is Nil, t.Lasterror   ' expect: True -2050
Next                                                        ' expect: True -2050
' expect: True -2050
' expect: True -2050
Print t.MediaSampleDescriptionRaw(1) Is Nil, t.Lasterror    ' expect: False 0

Dim sound As MemoryBlock = OpenMovie(TestMovie("two-tracks")).GetSoundTrackKRZ(1).MediaSampleDescriptionRaw(1)
sound.LittleEndian = False
Print sound.StringValue(4, 4), sound.UInt16Value(24), sound.UInt16Value(32)   ' expect: twos 2 44100
