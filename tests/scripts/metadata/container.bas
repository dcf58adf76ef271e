' A container walks its items in order, counts, adds and removes them, and says why when it cannot.
Const kAny = ""

Function Show(item As QTMetaDataItemKRZ) As String
  If item Is Nil Then Return "nil"
  Dim key As String = item.GetPropertyString("key ")
  If item.GetPropertyCode("keyf") <> "mdta" And item.GetPropertyCode("keyf") <> "itlk" Then key = item.GetPropertyCode("key ")
  Return item.GetPropertyCode("sfmt") + "/" + item.GetPropertyCode("keyf") + "/" + key + "=" + DefineEncoding(item.GetString, Encodings.UTF8)
End Function

Dim path As String = TestMovie("two-tracks")
Dim m As Movie = OpenMovie(path, True)
Dim d As QTMetaDataKRZ = m.MetaDataKRZ
Print d.Lasterror, d.CountItems, d.Lasterror      ' expect: 0 0 0
Print d.FirstItem Is Nil, d.Lasterror = d.kQTMetaDataNoMoreItemsErr   ' expect: True True

Dim added As QTMetaDataItemKRZ = d.AddItem("mdta", "mdta", "com.apple.quicktime.title", "First", 1)
Print Show(added), d.Lasterror, added.Lasterror   ' expect: mdta/mdta/com.apple.quicktime.title=First 0 0
Print Show(d.AddItemCode("udta", "udta", "©cmt", "in user data", 1))   ' expect: udta/udta/©cmt=in user data
Print Show(d.AddItemCode("itms", "itsk", "©alb", "Album", 1))          ' expect: itms/itsk/©alb=Album
Print Show(d.AddItem("itms", "itlk", "org.example:MOOD", "calm", 1))   ' expect: itms/itlk/org.example:MOOD=calm
Print Show(d.AddItem("itms", "itlk", "KEY", "usual", 1))               ' expect: itms/itlk/com.apple.iTunes:KEY=usual
Print Show(d.AddItemCode("mdta", "comn", "arts", "Artist", 1))         ' expect: mdta/comn/arts=Artist
Print Show(d.AddItemCode("udta", "comn", "cprt", "me", 3))             ' expect: udta/comn/cprt=me
Print Show(d.AddItem("mdta", "mdta", "com.apple.quicktime.title", "Second", 1))   ' expect: mdta/mdta/com.apple.quicktime.title=Second

' In order of storages, and in each in its own.
Dim item As QTMetaDataItemKRZ = d.FirstItem
While Not (item Is Nil)
  Print Show(item)          ' expect: mdta/mdta/com.apple.quicktime.title=First
  item = d.NextItem         ' expect: mdta/comn/arts=Artist
Wend                        ' expect: mdta/mdta/com.apple.quicktime.title=Second
Print d.Lasterror           ' expect: itms/itsk/©alb=Album
                            ' expect: itms/itlk/org.example:MOOD=calm
                            ' expect: itms/itlk/com.apple.iTunes:KEY=usual
                            ' expect: udta/udta/©cmt=in user data
                            ' expect: udta/comn/cprt=me
                            ' expect: -2177
Print d.NextItem Is Nil, Show(d.FirstItem)        ' expect: True mdta/mdta/com.apple.quicktime.title=First

' Keys: of a storage and format, of any, and the common ones over all storages.
Print d.CountItems, d.CountItemsWithKey("mdta", "mdta", "com.apple.quicktime.title"), d.CountItemsWithKey("mdta", "mdta", "title")   ' expect: 8 2 0
Print d.CountItemsWithKeyCode("itms", "itsk", "©alb"), d.CountItemsWithKeyCode("udta", "udta", "©cpy"), d.CountItemsWithKeyCode("udta", "itsk", "©cpy")   ' expect: 1 1 0
Print d.CountItemsWithKeyCode("mdta", "comn", "arts"), d.CountItemsWithKeyCode("mdta", "comn", "name"), d.CountItemsWithKeyCode("udta", "comn", "cprt")   ' expect: 1 2 1
Print d.CountItemsWithKeyCode("itms", "itsk", ""), d.CountItemsWithKeyCode("", "", ""), d.Lasterror     ' expect: 1 8 0
Print d.CountItemsWithKey("none", "mdta", "x"), d.Lasterror, d.CountItemsWithKey("mdta", "none", "x"), d.Lasterror   ' expect: 0 -2175 0 -2176

' What does not fit is not added.
Print d.AddItem("none", "mdta", "x", "v", 1) Is Nil, d.Lasterror    ' expect: True -2175
Print d.AddItem("mdta", "itlk", "x", "v", 1) Is Nil, d.Lasterror    ' expect: True -2176
Print d.AddItem("mdta", "mdta", "", "v", 1) Is Nil, d.Lasterror     ' expect: True -2176
Print d.AddItem("itms", "itsk", "toolong", "v", 1) Is Nil, d.Lasterror   ' expect: True -2176
Print d.AddItemCode("udta", "comn", "artw", "v", 1) Is Nil, d.Lasterror  ' expect: True -2176
Print d.AddItemCode("udta", "udta", "WLOC", "v", 1) Is Nil, d.Lasterror  ' expect: True -2176
Print d.AddItemCode("udta", "udta", "©inf", "v", 21) Is Nil, d.Lasterror ' expect: True -50
Print d.CountItems                                ' expect: 8

' Removing what was handed out last begins the walk anew; other items stay valid, the removed one does not.
item = d.FirstItem
Dim second As QTMetaDataItemKRZ = d.NextItem
d.RemoveItem(second)
Print d.Lasterror, d.CountItems, Show(d.NextItem) ' expect: 0 7 mdta/mdta/com.apple.quicktime.title=First
d.RemoveItem(second)
Print d.Lasterror                                 ' expect: -2174
Print second.GetString = "", second.Lasterror, item.GetString, item.Lasterror   ' expect: True -2174 First 0
second.SetString("x", 1)
Print second.Lasterror                            ' expect: -2174
d.RemoveItem(Nil)
Print d.Lasterror                                 ' expect: -1
d.RemoveItemsWithKey("mdta", "mdta", "com.apple.quicktime.title")
Print d.Lasterror, d.CountItems                   ' expect: 0 5
d.RemoveItemsWithKey("mdta", "mdta", "com.apple.quicktime.title")
Print d.Lasterror                                 ' expect: 0
d.RemoveItemsWithKeyCode("itms", "itsk", "©alb")
Print d.Lasterror, d.CountItems                   ' expect: 0 4
d.RemoveItemsWithKeyCode("itms", "itlk", "")
Print d.Lasterror, d.CountItems                   ' expect: 0 4

' What the container says of itself; the class of items is asked for on purpose.
Print d.GetPropertyString("ownt") = d.GetPropertyMemory("ownt").StringValue(0, 4), d.GetPropertyMemory("fmts").Size   ' expect: True 8
Print d.GetPropertyMemory("none") Is Nil, d.Lasterror, d.GetPropertyString("none") = ""   ' expect: True -2184 True
d.SetPropertyString("ownt", "trak")
Print d.Lasterror                                 ' expect: -2187
Dim four As New MemoryBlock(4)
d.SetPropertyMemory("fmts", four, 0, 4)
Print d.Lasterror                                 ' expect: -2187
Try
  d.SetPropertyMemory("fmts", Nil, 0, 4)
Catch e As NilObjectException
  Print e.Message                                 ' expect: value memoryblock is nil
End Try

' Saved and read again they stand in their native form.
m.Save
Print item.Lasterror, d.CountItems                ' expect: 0 4
Dim saved As Movie = OpenMovie(path)
d = saved.MetaDataKRZ
item = d.FirstItem
While Not (item Is Nil)
  Print Show(item)          ' expect: itms/itlk/org.example:MOOD=calm
  item = d.NextItem         ' expect: itms/itlk/com.apple.iTunes:KEY=usual
Wend                        ' expect: udta/udta/©cmt=in user data
                            ' expect: udta/udta/©cpy=me
' Closed, nothing is asked of the toolbox but where a nil container is its own matter.
d.Close
d.Close
Print d.Handle, d.AddItem("mdta", "mdta", "x", "v", 1) Is Nil, d.Lasterror   ' expect: 0 True -1
Print d.CountItems, d.Lasterror, d.FirstItem Is Nil, d.Lasterror             ' expect: 0 -2173 True -2173
d.RemoveItemsWithKey("mdta", "mdta", "x")
Print d.Lasterror, d.GetPropertyString("fmts") = "", d.Lasterror             ' expect: -1 True -1
