' What items of metadata and user data say, as text and as JSON.

' All items of a container, in its order.
Function ItemsOf(d As QTMetaDataKRZ) As QTMetaDataItemKRZ()
  Dim items() As QTMetaDataItemKRZ
  If d Is Nil Then Return items
  Dim item As QTMetaDataItemKRZ = d.FirstItem
  While Not (item Is Nil)
    items.Append item
    item = d.NextItem
  Wend
  Return items
End Function

Function ItemType(item As QTMetaDataItemKRZ) As Integer
  Dim block As MemoryBlock = item.GetPropertyMemory("dtyp")
  If block Is Nil Then Return 0
  Return block.Int32Value(0)
End Function

' The key as people read it: text, or "0x" and hexadecimal digits.
Function ItemKey(item As QTMetaDataItemKRZ) As String
  Dim format As String = item.GetPropertyCode("keyf")
  If format = "mdta" Or format = "itlk" Then Return PrintableKey(item.GetPropertyString("key "))
  Return PrintableKey(item.GetPropertyCode("key "))
End Function

Function PrintableKey(key As String) As String
  Dim digits As String = "0x"
  Dim printable As Boolean = True
  For i As Integer = 1 To LenB(key)
    Dim byte As Integer = AscB(MidB(key, i, 1))
    If byte < 32 Or byte = 127 Then printable = False
    Dim two As String = Lowercase(Hex(byte))
    If Len(two) < 2 Then two = "0" + two
    digits = digits + two
  Next
  If printable Then Return ConvertEncoding(key, Encodings.UTF8)
  Return digits
End Function

' The value as its type says: text, a number, or Nil for bytes that are neither.
Function ItemValue(item As QTMetaDataItemKRZ) As Variant
  Dim type As Integer = ItemType(item)
  If type = 1 Then Return ConvertEncoding(item.GetString, Encodings.UTF8)
  If type = 3 Then Return PlainText(item.GetString)
  Dim block As MemoryBlock = item.GetMemory
  If type = 2 Then Return BigEndianText(block)
  If block Is Nil Then Return Nil
  If type = 21 Or type = 22 Then Return BigEndianNumber(block, type = 21)
  If type = 23 And block.Size = 4 Then Return Double(Reversed(block).SingleValue(0))
  If type = 24 And block.Size = 8 Then Return Reversed(block).DoubleValue(0)
  Return Nil
End Function

Function Reversed(block As MemoryBlock) As MemoryBlock
  Dim turned As New MemoryBlock(block.Size)
  For i As Integer = 0 To block.Size - 1
    turned.Byte(block.Size - 1 - i) = block.Byte(i)
  Next
  Return turned
End Function

Function BigEndianText(block As MemoryBlock) As String
  If block Is Nil Then Return ""
  Dim units As New MemoryBlock(block.Size)
  For i As Integer = 0 To block.Size - 2 Step 2
    units.Byte(i) = block.Byte(i + 1)
    units.Byte(i + 1) = block.Byte(i)
  Next
  Dim first As Integer
  If block.Size >= 2 And block.Byte(0) = 254 And block.Byte(1) = 255 Then first = 2
  Return ConvertEncoding(DefineEncoding(units.StringValue(first, block.Size - block.Size Mod 2 - first), Encodings.UTF16), Encodings.UTF8)
End Function

Function BigEndianNumber(block As MemoryBlock, signed As Boolean) As Variant
  If block.Size > 8 Or (block.Size > 4 And block.Size < 8) Then Return Nil
  Dim value As Int64
  If signed And block.Byte(0) >= 128 Then value = -1
  For i As Integer = 0 To block.Size - 1
    value = value * 256 + block.Byte(i)
  Next
  Return value
End Function

Function ItemBytes(item As QTMetaDataItemKRZ) As Integer
  Dim block As MemoryBlock = item.GetMemory
  If block Is Nil Then Return 0
  Return block.Size
End Function

' An item as `krz info --json` shows it.
Function ItemDocument(item As QTMetaDataItemKRZ) As JSONItem
  Dim document As New JSONItem
  document.Value("storageFormat") = item.GetPropertyCode("sfmt")
  document.Value("keyFormat") = item.GetPropertyCode("keyf")
  document.Value("key") = ItemKey(item)
  document.Value("dataType") = ItemType(item)
  Dim value As Variant = ItemValue(item)
  document.Value("value") = value
  If value Is Nil Then document.Value("bytes") = ItemBytes(item)
  Return document
End Function

Function ItemDocuments(d As QTMetaDataKRZ) As JSONItem
  Dim list As New JSONItem("[]")
  For Each item As QTMetaDataItemKRZ In ItemsOf(d)
    list.Append ItemDocument(item)
  Next
  Return list
End Function

' The items of a user data list: texts of those that are text, else how many bytes they have.
Function UserDataDocuments(u As QTUserDataKRZ) As JSONItem
  Dim list As New JSONItem("[]")
  If u Is Nil Then Return list
  Dim type As String = u.GetNextType("")
  While type <> ""
    For i As Integer = 1 To u.CountType(type)
      Dim document As New JSONItem
      document.Value("type") = PrintableKey(type)
      document.Value("index") = i
      Dim isText As Boolean = AscB(type) = 169
      If Not isText Then document.Value("bytes") = LenB(u.GetData(type, i))
      If isText Or StrComp(type, "name", 0) = 0 Then document.Value("text") = UserDataText(u, type, i)
      list.Append document
    Next
    type = u.GetNextType(type)
  Wend
  Return list
End Function

' The text of an item for people, in the language that says least: as GetText with region 0 finds it, but whole in Unicode.
Function UserDataText(u As QTUserDataKRZ, type As String, index As Integer) As String
  Dim data As String = u.GetData(type, index)
  Dim found As String, foundRank As Integer = 9, at As Integer = 1
  If StrComp(MidB(data, 5, 4), "data", 0) = 0 Then Return PlainText(MidB(data, 17))
  While at + 3 <= LenB(data)
    Dim length As Integer = AscB(MidB(data, at, 1)) * 256 + AscB(MidB(data, at + 1, 1))
    If at + 3 + length > LenB(data) Then Exit While
    Dim its As Integer = AscB(MidB(data, at + 2, 1)) * 256 + AscB(MidB(data, at + 3, 1))
    Dim rank As Integer = LanguageRank(its)
    If rank < foundRank Then
      found = MidB(data, at + 4, length)
      foundRank = rank
    End If
    at = at + 4 + length
  Wend
  If foundRank = 9 Or (at <= LenB(data) And StrComp(type, "name", 0) = 0) Then Return PlainText(data)
  If LenB(found) > 1 And AscB(found) = 254 Then
    Dim block As New MemoryBlock(LenB(found))
    For i As Integer = 1 To LenB(found)
      block.Byte(i - 1) = AscB(MidB(found, i, 1))
    Next
    Return BigEndianText(block)
  End If
  Return PlainText(found)
End Function

Function LanguageRank(language As Integer) As Integer
  Select Case language
  Case 0
    Return 0
  Case 32767
    Return 1
  Case 5575
    Return 2
  Case 21956
    Return 3
  End Select
  Return 4
End Function

' UTF-8 when it can be that, else MacRoman: not every writer keeps to what a text is said to be.
Function PlainText(bytes As String) As String
  Return ConvertEncoding(DefineEncoding(bytes, Encodings.Unknown), Encodings.UTF8)
End Function
