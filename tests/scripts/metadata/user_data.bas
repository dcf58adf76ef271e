' A list that a script makes: texts in several languages, items of bytes, the walk over types, the flattened form.
Function HexOf(text As String) As String
  Dim all As String
  For i As Integer = 1 To LenB(text)
    Dim digits As String = Hex(AscB(MidB(text, i, 1)))
    If Len(digits) < 2 Then digits = "0" + digits
    all = all + digits
  Next
  Return Lowercase(all)
End Function

Dim u As New QTUserDataKRZ
Print "[" + u.GetText("©nam", 1, 0) + "]", u.Lasterror, u.CountType("©nam"), u.Lasterror   ' expect: [] -1 0 -1
u.RemoveText("©nam", 1, 0)
Print u.Lasterror                                 ' expect: -1
Print u.BinaryData = "", u.Lasterror              ' expect: True -1
u.AddText("©nam", 1, 0, "Holiday")
Print u.Lasterror, u.Release, u.Handle <> 0, u.GetText("©nam", 1, 0)     ' expect: 0 True True Holiday
Print HexOf(u.BinaryData), u.Lasterror            ' expect: 00000013a96e616d00070000486f6c6964617900000000 0

' One item, several regions: replaced by its own region, removed one by one.
u.AddText("©nam", 1, 1, "Vacances")
u.AddText("©nam", 1, 0, "Holidays")
Print u.CountType("©nam"), u.GetText("©nam", 1, 0), u.GetText("©nam", 1, 1), u.Lasterror   ' expect: 1 Holidays Vacances 0
Print "[" + u.GetText("©nam", 1, 2) + "]", u.Lasterror     ' expect: [] -2026
u.AddText("©nam", 2, 0, "x")
Print u.Lasterror                                 ' expect: -2026
u.RemoveText("©nam", 1, 0)
Print u.GetText("©nam", 1, 1), u.GetText("©nam", 1, 0), u.Lasterror     ' expect: Vacances Vacances 0
u.RemoveText("©nam", 1, 1)
Print u.Lasterror, u.CountType("©nam")            ' expect: 0 0

' Region 0 finds a text of no particular language; Unicode comes back as MacRoman.
u.AddText("©cmt", 1, 1, "one")
u.AddText("©cmt", 1, 21956, "Café Ω 日")
u.AddText("©cmt", 1, 32767, "any")
Print u.GetText("©cmt", 1, 0), u.GetText("©cmt", 1, 21956)     ' expect: any Café Ω ?
Print Encoding(u.GetText("©cmt", 1, 21956)) = Encodings.MacRoman   ' expect: True
u.RemoveText("©cmt", 1, 32767)
Print u.GetText("©cmt", 1, 0)                     ' expect: Café Ω ?
u.AddText("©cmt", 1, 5575, "english")
Print u.GetText("©cmt", 1, 0)                     ' expect: english
u.AddText("©cmt", 1, 5, "")
Print u.Lasterror                                 ' expect: -1

' Bytes: indexes of a type close up behind a removal.
u.AddData("WLOC", ChrB(1) + ChrB(0) + ChrB(2))
Dim block As New MemoryBlock(2)
block.Byte(0) = 77
u.AddData("WLOC", block)
u.AddData("ctyp", "qtvr")
Print u.CountType("WLOC"), HexOf(u.GetData("WLOC", 1)), HexOf(u.GetData("WLOC", 2)), u.Lasterror   ' expect: 2 010002 4d00 0
u.RemoveData("WLOC", 1)
Print u.Lasterror, u.CountType("WLOC"), HexOf(u.GetData("WLOC", 1))      ' expect: 0 1 4d00
u.RemoveData("WLOC", 2)
Print u.Lasterror                                 ' expect: -2026
Print "[" + u.GetData("none", 1) + "]", u.Lasterror   ' expect: [] -2026
u.AddData("ctyp", "")
Print u.Lasterror, u.CountType("ctyp"), u.CountType("") ' expect: -1 1 0

' Every type once, in order of first appearance; the error says -1 behind each step.
u.AddData("©cmt", ChrB(0) + ChrB(1) + ChrB(0) + ChrB(0) + "z")
Dim type As String = u.GetNextType("")
While type <> ""
  Print type, u.Lasterror                         ' expect: ©cmt -1
  type = u.GetNextType(type)                      ' expect: WLOC -1
Wend                                              ' expect: ctyp -1
Print u.Lasterror, u.GetText("©cmt", 2, 0)        ' expect: -1 z

' The flattened form makes the same list again, in an object and in a block of memory.
Dim copy As New QTUserDataKRZ
copy.BinaryData = u.BinaryData
Print copy.Lasterror, copy.Release, HexOf(copy.BinaryData) = HexOf(u.BinaryData), copy.GetText("©cmt", 1, 1)   ' expect: 0 True True one
Dim again As New QTUserDataKRZ
again.Memory = copy.Memory
Print again.Lasterror, again.Memory.Size = copy.Memory.Size, again.CountType("ctyp")   ' expect: 0 True 1
again.BinaryData = "not a list"
Print again.Lasterror, again.Handle, again.Release  ' expect: -50 0 True
again.BinaryData = ""
Print again.Lasterror, again.Handle               ' expect: -1 0
again.AddText("name", 1, 0, "new")
Print again.Lasterror, HexOf(again.BinaryData)    ' expect: 0 0000000f6e616d65000300006e657700000000

' Closed, it has no list and begins anew.
copy.Close
Print copy.Handle, copy.Release, copy.CountType("ctyp"), copy.GetNextType("") = ""   ' expect: 0 True 0 True
copy.Close
copy.AddData("TAGS", "x")
Print copy.Lasterror, copy.CountType("TAGS")      ' expect: 0 1
copy.Close
copy.Handle = 4711
copy.AddData("TAGS", "x")
Print copy.Lasterror, copy.CountType("TAGS")      ' expect: -50 0
