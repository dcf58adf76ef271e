' Texts of user data and metadata in user data are the same bytes; lists of tracks are their own.
Dim path As String = TestMovie("two-tracks")
Dim m As Movie = OpenMovie(path, True)
Dim u As QTUserDataKRZ = m.UserDataKRZ
Dim d As QTMetaDataKRZ = m.MetaDataKRZ
Dim item As QTMetaDataItemKRZ = d.AddItemCode("udta", "comn", "name", "Title", 1)
Print u.GetText("©nam", 1, 21956), u.CountType("©nam")   ' expect: Title 1
u.AddText("©nam", 1, 21956, "New title")
Print item.GetString, item.Lasterror              ' expect: New title 0
u.AddText("©nam", 1, 0, "Roman title")
u.AddText("©cmt", 1, 0, "Comment")
u.AddData("TAGS", "bytes")
Print d.CountItems, d.CountItemsWithKeyCode("udta", "udta", "©nam"), d.CountItemsWithKeyCode("udta", "udta", "TAGS")   ' expect: 3 2 0
item.SetString("Newest", 1)
Print u.GetText("©nam", 1, 21956), u.GetText("©nam", 1, 0)   ' expect: Newest Roman title
u.RemoveText("©nam", 1, 21956)
Print item.GetString = "", item.Lasterror         ' expect: True -2174
d.RemoveItemsWithKeyCode("udta", "comn", "cmmt")
Print u.CountType("©cmt"), u.GetNextType("©nam")  ' expect: 0 TAGS
d.RemoveItem(d.FirstItem)
Print u.CountType("©nam"), u.CountType("TAGS")    ' expect: 0 1

' A short list lives inside the user data and is none of its items.
Print d.AddItemCode("itms", "itsk", "©ART", "Someone", 1) Is Nil     ' expect: False
Print u.GetNextType("TAGS") = "", u.CountType("meta")     ' expect: True 0
u.AddData("meta", "x")
Print u.Lasterror                                 ' expect: -50

Dim t As QTTrackKRZ = m.GetSoundTrackKRZ(1)
Dim td As QTMetaDataKRZ = t.MetaData
Print t.Lasterror, td.CountItems                  ' expect: 0 0
Print td.AddItem("mdta", "mdta", "com.apple.quicktime.title", "of the track", 1) Is Nil   ' expect: False
Print td.AddItemCode("udta", "udta", "name", "Voice", 3) Is Nil, td.AddItemCode("itms", "itsk", "©nam", "short", 1) Is Nil   ' expect: False False
Print t.UserData.GetText("name", 1, 0)            ' expect: Voice
m.Save
Dim saved As Movie = OpenMovie(path)
Print saved.MetaDataKRZ.CountItems, saved.UserDataKRZ.CountType("TAGS"), saved.GetSoundTrackKRZ(1).MetaData.CountItems, saved.GetVideoTrackKRZ(1).MetaData.CountItems   ' expect: 1 1 3 0
Print saved.GetSoundTrackKRZ(1).UserData.GetText("name", 1, 0)     ' expect: Voice

Dim lost As New QTTrackKRZ
Print lost.MetaData Is Nil, lost.Lasterror        ' expect: True -2009
