' Keys of one text in any case, and equal numbers of any type, are one key; order is that of the first assignment.
Dim d As New Dictionary
Print d.Count, d.Keys.Count, d.HasKey("")            ' expect: 0 0 False
d.Value("Ärmel") = "first" : d.Value(7) = block() : d.Value(True) = Nil : d.Value("") = "no text"
d.Value(Nil) = "nothing" : d.Value(&c010203) = 0.5 : d.Value("äRMEL") = "again" : d.Value(7.0) = "seven"
Print d.Count, d.Value("ÄRMEL"), d.Value(Int64(7))   ' expect: 6 again seven
Print d.Value(True), d.Value(""), d.Value(Nil)       ' expect: Nil no text nothing
For Each key As Variant In d.Keys
  Print "[" & String(key) & "]"
Next
' expect: [Ärmel]
' expect: [7]
' expect: [True]
' expect: []
' expect: []
' expect: [&c010203]
Print d.HasKey("7"), d.HasKey(1), d.HasKey(7.5)      ' expect: False False False

d.Remove("ärmel")
d.Value("Ärmel") = "last"
Dim values() As Variant = d.Values
Print values.Count, values(0), values(5)             ' expect: 6 seven last

Dim a As New MemoryBlock(1)
Dim b As New MemoryBlock(1)
d.Value(a) = "a"
Print d.HasKey(a), d.HasKey(b)                       ' expect: True False
Print d.Lookup(b, "other"), d.Lookup(a, "other")     ' expect: other a

Try
  Print d.Value("missing")
Catch e As KeyNotFoundException
  Print e.Message
End Try
' expect: there is no value for the key "missing"; ask HasKey before, or use Lookup with a value to take instead
Try
  d.Remove(99)
Catch e As KeyNotFoundException
  Print "still", d.Count                             ' expect: still 7
End Try
d.Clear
Print d.Count, d.HasKey(7)                           ' expect: 0 False

' Many keys, half of them removed.
For i As Integer = 1 To 2000
  d.Value("key " & i) = i
Next
For i As Integer = 1 To 2000 Step 2
  d.Remove("KEY " & i)
Next
Dim sum As Integer
For Each value As Variant In d.Values
  sum = sum + Integer(value)
Next
Print d.Count, sum                                   ' expect: 1000 1001000

Function block() As MemoryBlock
  Return New MemoryBlock(3)
End Function
