' Values and properties of items: what can be set, what cannot, and what comes back after saving.
Dim path As String = TestMovie("two-tracks")
Dim m As Movie = OpenMovie(path, True)
Dim d As QTMetaDataKRZ = m.MetaDataKRZ

Function TypeOf(item As QTMetaDataItemKRZ) As Integer
  Return item.GetPropertyMemory("dtyp").Int32Value(0)
End Function

Function Numbers(values() As Integer) As MemoryBlock
  Dim block As New MemoryBlock(values.Count)
  For i As Integer = 0 To values.Ubound
    block.Byte(i) = values(i)
  Next
  Return block
End Function

Dim item As QTMetaDataItemKRZ = d.AddItemCode("itms", "itsk", "tmpo", "", 21)
Print item.GetString = "", item.Lasterror, item.GetPropertyString("valu") = "", item.Lasterror   ' expect: True -50 True -50
item.SetMemory(Numbers(Array(9, 0, 120, 9)), 1, 2, 21)
Print item.Lasterror, item.GetMemory.Size, item.GetMemory.Byte(1), TypeOf(item)   ' expect: 0 2 120 21
item.SetString("text", 1)
Print item.GetString, TypeOf(item), Encoding(item.GetString) = Encodings.Unknown ' expect: text 1 True
item.SetPropertyString("valu", "other")
Print item.Lasterror, item.GetMemory.StringValue(0, 5), item.GetPropertyMemory("valu").Size   ' expect: 0 other 5
item.SetPropertyMemory("valu", Numbers(Array(1, 2, 3, 4)), 2, 2)
Print item.Lasterror, item.GetMemory.Size, item.GetMemory.Byte(0)   ' expect: 0 2 3
item.SetPropertyCode("dtyp", ChrB(0) + ChrB(0) + ChrB(0) + ChrB(22))
Print item.Lasterror, TypeOf(item)                ' expect: 0 22
item.SetPropertyString("dtyp", "long type")
Print item.Lasterror, TypeOf(item)                ' expect: -2183 22

Print item.GetPropertyCode("sfmt"), item.GetPropertyCode("keyf"), item.GetPropertyCode("key "), item.Lasterror   ' expect: itms itsk tmpo 0
Print item.GetPropertyCode("valu") = "", item.Lasterror   ' expect: True 0
For Each what As String In Array("sfmt", "keyf", "key ")
  item.SetPropertyCode(what, "mdta")
  Print item.Lasterror                            ' expect: -2187
Next                                              ' expect: -2187
item.SetPropertyCode("none", "mdta")              ' expect: -2187
Print item.Lasterror, item.GetPropertyMemory("none") Is Nil, item.Lasterror   ' expect: -2184 True -2184

' Locales, in lists and in user data.
Dim t As QTMetaDataItemKRZ = d.AddItemCode("udta", "udta", "©nam", "Colour", 1)
For Each one As QTMetaDataItemKRZ In Array(item, t)
  one.SetPropertyString("loc ", "en_GB")
  Print one.Lasterror, one.GetPropertyString("loc ")
  one.SetPropertyString("loc ", "sgn-us")
  Print one.Lasterror, one.GetPropertyString("loc ")
  one.SetPropertyString("loc ", "xx")
  Print one.Lasterror, one.GetPropertyString("loc ")
  one.SetPropertyString("loc ", "")
  Print one.Lasterror, one.GetPropertyString("loc ") = "", one.Lasterror
Next
' expect: 0 en_GB
' expect: 0 sgn_US
' expect: -50 sgn_US
' expect: 0 True -50
' expect: 0 en
' expect: 0 sgn
' expect: -50 sgn
' expect: 0 True -50

' Texts in user data are UTF-8 there, whatever they came as; the item keeps what it was given until it is read anew.
Dim wide As QTMetaDataItemKRZ = d.AddItemCode("udta", "udta", "©cmt", ChrB(0) + "H" + ChrB(3) + ChrB(169), 2)
Dim mac As QTMetaDataItemKRZ = d.AddItemCode("udta", "udta", "©inf", ConvertEncoding("Café", Encodings.MacRoman), 3)
Print LenB(wide.GetString), TypeOf(wide), LenB(mac.GetString), TypeOf(mac)   ' expect: 4 2 4 3
item.SetPropertyString("loc ", "de_AT")
m.Save
Dim saved As Movie = OpenMovie(path)
d = saved.MetaDataKRZ
Dim one As QTMetaDataItemKRZ = d.FirstItem
While Not (one Is Nil)
  Print one.GetPropertyCode("key "), TypeOf(one), one.GetPropertyString("loc "), LenB(one.GetString)
  one = d.NextItem
Wend
' expect: tmpo 22 de_AT 2
' expect: ©nam 1  6
' expect: ©cmt 1  3
' expect: ©inf 3  4

' Nil blocks are the script's mistake, even where there is no item any more; closed, an item asks nothing.
item.Close
item.Close
Print item.GetString = "", item.Lasterror, item.GetPropertyCode("key ") = "", item.Lasterror   ' expect: True -1 True -1
Try
  item.SetMemory(Nil, 0, 1, 0)
Catch e As NilObjectException
  Print e.Message                                 ' expect: value memoryblock is nil
End Try
Try
  item.SetPropertyMemory("valu", Nil, 0, 1)
Catch e As NilObjectException
  Print e.Message                                 ' expect: value memoryblock is nil
End Try
Dim own As New QTMetaDataItemKRZ
own.SetString("x", 1)
Print own.Lasterror, own.GetMemory Is Nil, own.Lasterror   ' expect: -1 True -1

' A container that was closed, and a movie that was, before their items.
Dim c As QTMetaDataKRZ = m.MetaDataKRZ
Dim last As QTMetaDataItemKRZ = c.FirstItem
c.Close
Print last.GetPropertyCode("key "), last.Lasterror   ' expect: tmpo 0
m.Close
Print last.GetString = "", last.Lasterror         ' expect: True -2173
Print t.GetPropertyCode("key ") = "", t.Lasterror   ' expect: True -2173
