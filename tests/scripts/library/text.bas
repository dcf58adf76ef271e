' Places and lengths are in characters; those of the B forms are in bytes.
Dim mac As String = ConvertEncoding("ééé", Encodings.MacRoman)
Print Len("héllo"), LenB("héllo"), Len(""), Len(mac), LenB(mac), Len(ConvertEncoding("😀", Encodings.UTF16))   ' expect: 5 6 0 3 3 1
Print Left("héllo", 2), Left("héllo", 99), "[" + Left("héllo", -1) + "]", Left(mac, 2)   ' expect: hé héllo [] éé
Print Right("llé", 2), Right("llé", 99), Mid("aébc", 2, 2), Mid("aébc", 2)               ' expect: lé llé éb ébc
Print Mid("abc", 0, 2), "[" + Mid("abc", -5, 3) + "]", Mid("abc", 2, 2147483647), "[" + Mid("abc", 9, 1) + "]"   ' expect: a [] bc []
Print LeftB(ChrB(255) + ChrB(254), 1), MidB("abcd", 2, 2), MidB("abcd", 3), RightB("abcd", 3)   ' expect: ˇ bc cd bcd
Print "[" + Trim(Chr(9) + " a b " + Chr(13) + Chr(10)) + "]", "[" + LTrim("  a ") + "]", "[" + RTrim(" a  ") + "]", "[" + Trim("   ") + "]"   ' expect: [a b] [a ] [ a] []
Print Uppercase("straße éñ ÿ ω д ж 1"), Lowercase("ÄŒŽ×Ÿ ΑΣ ЁЯ") + Lowercase("")         ' expect: STRAßE ÉÑ Ÿ Ω Д Ж 1 äœž×ÿ ασ ёя

' Searching ignores case.
Print InStr("Été à la plage", "À"), InStr("abcABC", "b"), InStr(3, "abcABC", "b"), InStr("abc", "x"), InStr(99, "abc", "a")   ' expect: 5 2 5 0 0
Print InStr(ConvertEncoding("café", Encodings.MacRoman), "é"), InStrB(1, "aéb", "b")   ' expect: 4 4
Print Replace("one One one", "ONE", "two"), ReplaceAll("one One one", "ONE", "é"), ReplaceAll("aaa", "a", "aa"), ReplaceAll("abc", "", "x")   ' expect: two One one é é é aaaaaa abc
Print ReplaceLineEndings("a" + Chr(13) + Chr(10) + "b" + Chr(13) + "c" + Chr(10) + Chr(13) + "d", "-"), ReplaceLineEndings("a b", "-")   ' expect: a-b-c--d a b
Print StrComp("abc", "ABC"), StrComp("abc", "ABC", 0), StrComp("a", "b")   ' expect: 0 1 -1

' Fields.
Print Join(Split("a,b,,c", ","), "|"), Join(Split("a b"), "|"), Join(Split("aéb", ""), "|"), Split("", ",").Count   ' expect: a|b||c a|b a|é|b 1
Print NthField("a::b::c", "::", 3), "[" + NthField("a,b", ",", 3) + NthField("a,b", ",", 0) + "]", CountFields("a,b,", ","), CountFields("", ",")   ' expect: c [] 3 0
Print Join(Split("a,b", ","), "—"), Join(Split("a,b", ","))   ' expect: a—b a b

' Numbers become text, and back.
Print Str(10), Str(0.1), Str(1e6), Str(True), Str(Int64(1099511627776)), Str(1234.5, "#,##0.00")   ' expect: 10 0.1 1000000 True 1099511627776 1,234.50
Print Val(" -12.5kg"), Val("&h1F"), Val("none"), Hex(255), Hex(-1), Oct(8), Bin(5)   ' expect: -12.5 31 0 FF FFFFFFFF 10 101
Print Chr(233), Asc("é!"), Asc(""), AscB("é")   ' expect: é 233 0 195
Try
  Print Chr(-1)
Catch e As OutOfBoundsException
  Print e.Message                               ' expect: -1 is no character
End Try
Print Format(3.14159, "0.00"), Format(0.5, "#.##"), Format(0.5, "0.0#"), Format(7, "000"), Format(1234567.891, "#,##0.0"), Format(-5, "0")   ' expect: 3.14 .5 0.5 007 1,234,567.9 -5
Print Format(-0.001, "0.00"), Format(0.256, "0.0%"), Format(12, "[0] s"), Format(-3, "0;(0);zero"), Format(0, "0;(0);zero"), Format(5, "")   ' expect: 0.00 25.6% [12] s (3) zero 5
Print Len(Format(1e300, "0")), Format(1e300, "0") = Format(1e300, "#")   ' expect: 301 True

' Encodings are stated and changed.
Dim latin As String = ConvertEncoding("é", Encodings.MacRoman)
Print AscB(latin), Encoding(latin), AscB(DefineEncoding(latin, Encodings.ISOLatin1)), Encoding(DefineEncoding(latin, Encodings.ISOLatin1)) = Encodings.ISOLatin1   ' expect: 142 0 142 True
Print Hex(Encodings.UTF8), Hex(Encodings.UTF16)   ' expect: 8000100 100

' Numbers are worked out.
Dim lowest As Integer = -2147483648
Print Abs(-3), Abs(-3.5), Abs(lowest), Min(2, 1), Max(2, 1.5), Max(Int64(8589934592), 1), Sign(-0.1)   ' expect: 3 3.5 -2147483648 1 2 8589934592 -1
Print Floor(-1.5), Ceil(-1.5), Round(2.5), Round(-2.5), Sqrt(2.25), Pow(2, 10), Atan2(0, -1), Exp(0), Log(1)   ' expect: -2 -1 3 -3 1.5 1024 3.141592653589793 1 0
