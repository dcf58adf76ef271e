' Documents keep the order of their members, and wrong ones are refused.
Dim root As New JSONItem, list As New JSONItem
root.Value("zeta") = 1 : root.Value("alpha") = "é ""quoted""" + Chr(10) : root.Value("seconds") = 10.0
root.Value("big") = Int64(1099511627776) : root.Value("yes") = True : root.Value("none") = Nil
list.Append 1
list.Append "two"
root.Value("list") = list : root.Value("words") = Split("a b")
Print root.ToString
' expect: {"zeta":1,"alpha":"é \"quoted\"\n","seconds":10.0,"big":1099511627776,"yes":true,"none":null,"list":[1,"two"],"words":["a","b"]}
Print list.ToString(True)
' expect: [
' expect:   1,
' expect:   "two"
' expect: ]
Print root.Count, root.NameAt(1), root.Value("seconds"), root.HasName("none"), root.Child("list").Value(1)   ' expect: 8 alpha 10 True two
root.Remove("zeta")
Print root.NameAt(0)                      ' expect: alpha

Dim item As New JSONItem
item.Load("{""b"": [1, -2.5, null, {""c"": ""\u00e9""}], ""a"": 18446744073709551615}")
Dim before As String = item.ToString
Print before                              ' expect: {"b":[1,-2.5,null,{"c":"é"}],"a":18446744073709551615}
Dim deep As String = "["
For i As Integer = 1 To 17
  deep = deep + deep
Next
Dim refused As Integer
For Each wrong As String In Array("", "{", "[1,]", "{""a"":}", "nul", "[1] 2", "[1e999]", deep)
  Try
    item.Load(wrong)
    Print "taken", Left(wrong, 20)
  Catch e As JSONException
    If item.ToString = before Then refused = refused + 1
  End Try
Next
Print refused                             ' expect: 8
Try
  Print item.Value("missing")
Catch e As KeyNotFoundException
  Print e.Message                         ' expect: there is no value named "missing"
End Try
Try
  Print item.Value(2)
Catch e As OutOfBoundsException
  Print "outside"                         ' expect: outside
End Try
Try
  item.Value("x") = New MemoryBlock(1)
Catch e As TypeMismatchException
  Print e.Message                         ' expect: a value of this type has no JSON form
End Try

' A document that is put into itself again and again reaches a bound, not the end of the stack.
Dim levels As Integer
Try
  While levels < 2000
    Dim outer As New JSONItem
    outer.Value("x") = item
    item = outer
    levels = levels + 1
  Wend
Catch e As JSONException
  Print levels, e.Message                 ' expect: 497 a document is nested more than 500 levels deep
End Try
