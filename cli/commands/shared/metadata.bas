' Keys of metadata as people name them, and the items behind them.
'
' A key is a name ("title"), which stands for its key in each store, or a store and its own key: "mdta:KEY",
' "itms:CODE", "itms:MEAN:NAME", "udta:CODE".
#Include "changes.bas"
#Include "items.bas"

' Name, QuickTime key behind its prefix, four letters of the short list, code in user data; "-" for none.
Const kNames = "title title ©nam ©nam;artist artist ©ART ©ART;albumartist - aART -;album album ©alb ©alb;comment comment ©cmt ©cmt;copyright copyright cprt ©cpy;date creationdate ©day ©day;genre genre ©gen ©gen;description description desc ©des;synopsis - ldes -;composer composer ©wrt ©com;writer writer - ©wrt;director director ©dir ©dir;producer producer ©prd ©prd;author author ©aut ©aut;performer performer - ©prf;publisher publisher - ©pub;keywords keywords keyw ©key;information information ©inf ©inf;software software ©too ©swr;make make - ©mak;model model - ©mod;location location.ISO6709 - ©xyz;displayname displayname - -;grouping - ©grp -;lyrics - ©lyr -;track - trkn ©trk;disc - disk -;tempo - tmpo -;compilation - cpil -;show - tvsh -;season - tvsn -;episode - tves -;network - tvnn -;artwork artwork covr -"
Const kPrefix = "com.apple.quicktime."

Class MetaKey
  Name As String       ' as the user wrote it
  Storage As String
  Format As String
  Key As String

  Sub Constructor(name As String, storage As String, key As String)
    Self.Name = name
    Self.Storage = storage
    Self.Key = key
    Format = storage
    If storage = "itms" Then Format = "itsk"
    If storage = "itms" And Len(key) <> 4 Then Format = "itlk"
    If Format = "itlk" And InStr(key, ":") = 0 Then Self.Key = "com.apple.iTunes:" + key
    If storage = "udta" And Len(key) <> 4 Then Raise New UsageError(name + ": a key of user data has four letters")
  End Sub

  Function Matches(item As QTMetaDataItemKRZ) As Boolean
    Return item.GetPropertyCode("sfmt") = Storage And StrComp(ItemKey(item), Key, 0) = 0
  End Function

  Function Add(d As QTMetaDataKRZ, value As String, type As Integer) As QTMetaDataItemKRZ
    Dim item As QTMetaDataItemKRZ
    If Format = "itsk" Or Format = "udta" Then
      item = d.AddItemCode(Storage, Format, Key, value, type)
    Else
      item = d.AddItem(Storage, Format, Key, value, type)
    End If
    If item Is Nil Then Fail(Name + " cannot be kept in " + Storage + " (error " + Str(d.Lasterror) + ")", 1)
    Return item
  End Function
End Class

' The keys that a word stands for, one in each store that has it.
Function KeysFor(word As String) As MetaKey()
  Dim found() As MetaKey
  Dim only As String = StoreOption("storage")
  Dim store As String = Left(word, 4)
  If Mid(word, 5, 1) = ":" And (store = "mdta" Or store = "itms" Or store = "udta") Then
    found.Append New MetaKey(word, store, Mid(word, 6))
    Return found
  End If
  For Each line As String In Split(kNames, ";")
    Dim parts() As String = Split(line, " ")
    If parts(0) <> word Then Continue
    If parts(1) <> "-" And (only = "" Or only = "mdta") Then found.Append New MetaKey(word, "mdta", kPrefix + parts(1))
    If parts(2) <> "-" And (only = "" Or only = "itms") Then found.Append New MetaKey(word, "itms", parts(2))
    If parts(3) <> "-" And (only = "" Or only = "udta") Then found.Append New MetaKey(word, "udta", parts(3))
    If found.Count = 0 Then Raise New UsageError(only + " has no key for " + word)
    Return found
  Next
  If only <> "" Then
    found.Append New MetaKey(word, only, word)
    Return found
  End If
  Raise New UsageError(word + " is no name that is known; a store's own key is written mdta:KEY, itms:CODE or udta:CODE")
End Function

Function StoreOption(name As String) As String
  Dim store As String = CommandLine.Value(name)
  If store <> "" And store <> "mdta" And store <> "itms" And store <> "udta" Then Raise New UsageError("--" + name + " is mdta, itms or udta, not " + store)
  Return store
End Function

' What people call the key of an item; the key itself when they have no name for it.
Function NameOf(item As QTMetaDataItemKRZ) As String
  Dim column As Integer = 1
  If item.GetPropertyCode("sfmt") = "itms" Then column = 2
  If item.GetPropertyCode("sfmt") = "udta" Then column = 3
  Dim key As String = ItemKey(item)
  For Each line As String In Split(kNames, ";")
    Dim parts() As String = Split(line, " ")
    Dim native As String = parts(column)
    If column = 1 Then native = kPrefix + native
    If StrComp(native, key, 0) = 0 Then Return parts(0)
  Next
  Return key
End Function

' The value in a line: pairs of numbers as "3/12", pictures and other bytes by their size.
Function ShownValue(item As QTMetaDataItemKRZ) As String
  Dim value As Variant = ItemValue(item)
  If Not (value Is Nil) Then Return ReplaceAll(String(value), Chr(10), " ")
  Dim block As MemoryBlock = item.GetMemory
  Dim key As String = ItemKey(item)
  If block Is Nil Then Return ""
  If (key = "trkn" Or key = "disk") And block.Size >= 6 Then
    Dim text As String = Str(block.Byte(2) * 256 + block.Byte(3))
    Dim total As Integer = block.Byte(4) * 256 + block.Byte(5)
    If total > 0 Then text = text + "/" + Str(total)
    Return text
  End If
  Select Case ItemType(item)
  Case 13
    Return "JPEG, " + Counted(block.Size, "byte")
  Case 14
    Return "PNG, " + Counted(block.Size, "byte")
  Case 27
    Return "BMP, " + Counted(block.Size, "byte")
  End Select
  Return Counted(block.Size, "byte") + " of type " + Str(ItemType(item))
End Function

' The bytes of a value that was written as text, for a key; `type` is what it is.
Function EncodedValue(key As MetaKey, text As String, ByRef type As Integer) As String
  type = 1
  If key.Storage <> "udta" And (key.Key = "covr" Or key.Key = kPrefix + "artwork") Then Return PictureIn(text, type)
  If key.Storage <> "itms" Then Return ConvertEncoding(text, Encodings.UTF8)
  Select Case key.Key
  Case "trkn", "disk"
    type = 0
    Dim parts() As String = Split(text, "/")
    Dim total As Integer
    If parts.Count > 1 Then total = NumberIn(parts(1), key.Name)
    Dim bytes As String = BigEndian(0, 2) + BigEndian(NumberIn(parts(0), key.Name), 2) + BigEndian(total, 2)
    If key.Key = "trkn" Then bytes = bytes + BigEndian(0, 2)
    Return bytes
  Case "tmpo"
    type = 21
    Return BigEndian(NumberIn(text, key.Name), 2)
  Case "cpil"
    type = 21
    Return BigEndian(NumberIn(text, key.Name), 1)
  Case "tvsn", "tves"
    type = 21
    Return BigEndian(NumberIn(text, key.Name), 4)
  End Select
  Return ConvertEncoding(text, Encodings.UTF8)
End Function

Function NumberIn(text As String, name As String) As Integer
  Dim digits As New RegEx("^\d{1,5}$")
  If digits.Search(text) Is Nil Then Raise New UsageError(name + " is a number, or two with a slash between them, not " + text)
  Return Integer(Val(text))
End Function

Function BigEndian(value As Integer, bytes As Integer) As String
  Dim block As New MemoryBlock(bytes)
  For i As Integer = bytes - 1 DownTo 0
    block.Byte(i) = value Mod 256
    value = value \ 256
  Next
  Return block.StringValue(0, bytes)
End Function

Function PictureIn(path As String, ByRef type As Integer) As String
  Dim bytes As String = FileBytes(path)
  type = 0
  If LenB(bytes) > 8 Then
    If AscB(bytes) = 255 And AscB(MidB(bytes, 2, 1)) = 216 Then type = 13
    If AscB(bytes) = 137 And StrComp(MidB(bytes, 2, 3), "PNG", 0) = 0 Then type = 14
    If StrComp(LeftB(bytes, 2), "BM", 0) = 0 Then type = 27
  End If
  If type = 0 Then Raise New UsageError(path + " is no picture of a kind that artwork can be: JPEG, PNG or BMP")
  Return bytes
End Function

Function FileBytes(path As String) As String
  Try
    Dim stream As BinaryStream = BinaryStream.Open(path)
    Dim bytes As String = stream.Read(Integer(stream.Length))
    stream.Close
    Return bytes
  Catch e As IOException
    Fail(e.Message, 3)
  End Try
  Return ""
End Function

Sub WriteBytes(path As String, bytes As String)
  Try
    Dim stream As BinaryStream = BinaryStream.Create(path, CommandLine.Has("force"))
    stream.Write bytes
    stream.Close
  Catch e As IOException
    Fail(e.Message, 5)
  End Try
End Sub

' The container that the command is about: the movie's, or that of the track which --track names.
Function ContainerOf(m As Movie) As QTMetaDataKRZ
  Dim d As QTMetaDataKRZ
  If CommandLine.Has("track") Then
    d = SelectTrack(m, CommandLine.Value("track")).MetaData
  Else
    d = m.MetaDataKRZ
  End If
  If d Is Nil Then Fail("the metadata cannot be read", 3)
  Return d
End Function

Function OpenedMovie(path As String) As Movie
  Try
    Return OpenMovie(path)
  Catch e As IOException
    Fail(e.Message, 3)
  End Try
  Return Nil
End Function

' Where a movie keeps new items by its kind: QuickTime movies in QuickTime keys, the family of MP4 in the short list.
Function NaturalStore(path As String) As String
  Dim stream As BinaryStream = BinaryStream.Open(path)
  Dim head As String = stream.Read(12)
  stream.Close
  If StrComp(MidB(head, 5, 4), "ftyp", 0) <> 0 Or StrComp(MidB(head, 9, 4), "qt  ", 0) = 0 Then Return "mdta"
  Return "itms"
End Function

' "KEY=VALUE": an = stands before any slash.
Function IsAssignment(word As String) As Boolean
  Dim equals As Integer = InStr(word, "=")
  Dim slash As Integer = InStr(word, "/")
  Return equals > 1 And (slash = 0 Or equals < slash)
End Function

Sub SetLocale(item As QTMetaDataItemKRZ)
  If Not CommandLine.Has("locale") Then Return
  item.SetPropertyString("loc ", CommandLine.Value("locale"))
  If item.Lasterror <> 0 Then Raise New UsageError(CommandLine.Value("locale") + " is no locale; they are written en or en_GB")
End Sub

Sub AddValue(keys() As MetaKey, d As QTMetaDataKRZ, store As String, text As String)
  Dim key As MetaKey = keys(0)
  For Each one As MetaKey In keys
    If one.Storage = store Then key = one
  Next
  Dim type As Integer
  Dim value As String = EncodedValue(key, text, type)
  SetLocale(key.Add(d, value, type))
End Sub

' Sets or adds what the assignments say.
Sub Assign(onlyAdd As Boolean)
  Dim words() As String
  Dim path As String
  For Each word As String In Args
    If IsAssignment(word) Then words.Append word Else path = word
  Next
  If words.Count = 0 Then Raise New UsageError("nothing to set: write KEY=VALUE, such as title=""My film""")
  If path = "" Then Raise New UsageError("which movie?")
  Dim change As New MovieChange(path)
  Dim d As QTMetaDataKRZ = ContainerOf(change.Target)
  For Each word As String In words
    Dim equals As Integer = InStr(word, "=")
    Dim keys() As MetaKey = KeysFor(Left(word, equals - 1))
    Dim text As String = Mid(word, equals + 1)
    If onlyAdd Or Not ChangeValues(keys, d, text) Then AddValue(keys, d, NaturalStore(path), text)
  Next
  change.Finish
End Sub

' Sets the first item of each store that has the key, and takes further ones out. False when there is none.
Function ChangeValues(keys() As MetaKey, d As QTMetaDataKRZ, text As String) As Boolean
  Dim found As Boolean
  Dim items() As QTMetaDataItemKRZ = ItemsOf(d)
  For Each key As MetaKey In keys
    Dim first As Boolean = True
    For Each item As QTMetaDataItemKRZ In items
      If Not key.Matches(item) Then Continue
      If first Then
        Dim type As Integer
        item.SetString(EncodedValue(key, text, type), type)
        If item.Lasterror <> 0 Then Fail(key.Name + " cannot be set in " + key.Storage + " (error " + Str(item.Lasterror) + ")", 1)
        SetLocale(item)
      Else
        d.RemoveItem(item)
      End If
      first = False
      found = True
    Next
  Next
  Return found
End Function

' The whole value, however it is kept, for import: Nil when `value` says it all.
Function PackedBytes(item As QTMetaDataItemKRZ) As Variant
  If Not (ItemValue(item) Is Nil) And ItemType(item) = 1 Then Return Nil
  Return EncodeBase64(item.GetString)
End Function

' An item with all that import needs.
Function WholeDocument(item As QTMetaDataItemKRZ) As JSONItem
  Dim document As JSONItem = ItemDocument(item)
  document.Value("locale") = ConvertEncoding(item.GetPropertyString("loc "), Encodings.UTF8)
  Dim packed As Variant = PackedBytes(item)
  If Not (packed Is Nil) Then document.Value("base64") = packed
  Return document
End Function

Function WholeDocuments(d As QTMetaDataKRZ) As JSONItem
  Dim store As String = StoreOption("storage")
  Dim list As New JSONItem("[]")
  For Each item As QTMetaDataItemKRZ In ItemsOf(d)
    If store = "" Or item.GetPropertyCode("sfmt") = store Then list.Append WholeDocument(item)
  Next
  Return list
End Function

' The items that a key names in a container.
Function Matching(d As QTMetaDataKRZ, words As String) As QTMetaDataItemKRZ()
  Dim found() As QTMetaDataItemKRZ
  For Each word As String In Split(words, ",")
    Dim keys() As MetaKey = KeysFor(word)
    For Each item As QTMetaDataItemKRZ In ItemsOf(d)
      For Each key As MetaKey In keys
        If key.Matches(item) Then found.Append item
      Next
    Next
  Next
  Return found
End Function

Sub PrintItem(item As QTMetaDataItemKRZ)
  Dim line As String = "  " + PadRight(item.GetPropertyCode("sfmt"), 6) + PadRight(NameOf(item), 14) + " " + ShownValue(item)
  Dim locale As String = item.GetPropertyString("loc ")
  If locale <> "" Then line = line + "  [" + locale + "]"
  Print line
End Sub
