' What patterns find, where, and what they put in its place.
Dim r As New RegEx("(\w+)@(\w+)(!)?")
Dim m As RegExMatch = r.Search("über ich@heim, du@werk")
Print m.SubExpressionCount, m.SubExpression(0), m.SubExpression(2)   ' expect: 4 ich@heim heim
Print m.SubExpressionStart(0), m.SubExpressionStart(2)               ' expect: 6 10
Print "[" + m.SubExpression(3) + "]", m.SubExpressionStart(3)        ' expect: [] 0
Print r.Search("nobody") = Nil, r.SearchAll("nobody").Count          ' expect: True 0
Try
  Print m.SubExpression(4)
Catch e As OutOfBoundsException
  Print e.Message
End Try
' expect: there is no subexpression 4; give 0 for the whole match, or a number below SubExpressionCount, which is 4
For Each one As RegExMatch In r.SearchAll("a@b c@d!")
  Print one.SubExpression(0), one.SubExpressionStart(0)
Next
' expect: a@b 1
' expect: c@d! 5
Print r.Replace("a@b c@d", "\2 at $1"), r.ReplaceAll("a@b c@d", "<$0|$3|$$|\\|$9|$>")   ' expect: b at a c@d <a@b||$|\||$> <c@d||$|\||$>

' Options; a changed pattern counts at the next search.
r.SearchPattern = "^Ü.$"
Print r.Search("ün") <> Nil, r.Search("x" + Chr(10) + "ün") = Nil, r.Search("ü" + Chr(10)) = Nil   ' expect: True True True
r.MultiLine = True
r.DotMatchesAll = True
Print r.Search("x" + Chr(10) + "ün") <> Nil, r.Search("ü" + Chr(10)) <> Nil   ' expect: True True
r.CaseSensitive = True
Print r.Search("ün") = Nil                                           ' expect: True

' Empty matches move on by whole characters.
r = New RegEx("x*")
Print r.ReplaceAll("aüxxb", "-"), r.SearchAll("").Count              ' expect: -a-ü--b- 1
r = New RegEx("")
Print r.ReplaceAll("äö", ".")                                        ' expect: .ä.ö.

Sub Attempt(pattern As String, text As String)
  Dim bad As New RegEx(pattern)
  Try
    Print bad.Search(text) = Nil
  Catch e As RegExException
    Print e.Message
  End Try
End Sub
Attempt("a(b", "ab")
' expect: the pattern is wrong at byte 4: missing closing parenthesis
Attempt("\C", "ab")
' expect: the pattern is wrong at byte 3: using \C is disabled by the application
Dim as_ As String = "aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa"
Attempt("^(a+)+$", as_ + "b")
' expect: the search takes too much work; give repetitions inside of repetitions only one way to match, or search a shorter text
Dim long As String = as_
For i As Integer = 1 To 9
  long = long + long
Next
Try
  r = New RegEx("(a?){18}b|c")
  Print r.ReplaceAll(long, "")
Catch e As RegExException
  Print "given up"                                                   ' expect: given up
End Try
Try
  r = New RegEx("a")
  Dim much As String = r.ReplaceAll(long + long, long + long)
  Print "too long"
Catch e As OutOfMemoryException
  Print e.Message                                                    ' expect: the replaced text is longer than 64 MiB; replace in pieces
End Try
