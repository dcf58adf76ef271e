' Moments as the calendar shows them, and the texts that they are written as.
Dim d As DateTime = DateTime.Parse("2024-02-29T12:34:56.25+02:00")
Print d.Year, d.Month, d.Day, d.Hour, d.Minute, d.Second     ' expect: 2024 2 29 12 34 56
Print d.DayOfWeek, d.DayOfYear, d.SecondsFromUTC              ' expect: 5 60 7200
Print d.ToString, d.UTC.ToString                              ' expect: 2024-02-29T12:34:56.25+02:00 2024-02-29T10:34:56.25Z
Print d.SecondsFrom1970                                       ' expect: 1709202896.25
Print d.AddSeconds(86400).ToString                            ' expect: 2024-03-01T12:34:56.25+02:00
Print d.Local.SecondsFrom1970 = d.SecondsFrom1970             ' expect: True
Print DateTime.FromSeconds(0).ToString, DateTime.FromSeconds(-0.5).ToString   ' expect: 1970-01-01T00:00:00Z 1969-12-31T23:59:59.5Z

Dim local As New DateTime(2024, 12, 24, 18)
Print local.Year, local.Hour, DateTime.Parse("2024-12-24 18:00").SecondsFrom1970 = local.SecondsFrom1970   ' expect: 2024 18 True
Dim before As Double = DateTime.Now.SecondsFrom1970
Dim now As New DateTime
Print now.SecondsFrom1970 >= before, now.SecondsFrom1970 < before + 600   ' expect: True True

For Each text As String In Array("", "2024", "2024-02-30", "2023-02-29", "2024-13-01", "2024-01-01T24:00Z", "2024-01-01T1:00Z", _
    "2024-01-01T10:00Zulu", "2024-01-01T10:00+99:00", "2024-01-01T10:00:00.Z", "0000-01-01", "0001-01-01T00:00+01:00")
  Try
    Print DateTime.Parse(text).ToString
  Catch e As InvalidArgumentException
    If text = "2024-02-30" Then Print e.Message
  End Try
Next
' expect: "2024-02-30" is no date; write it like 2024-02-29 or 2024-02-29T12:30:00Z
Try
  d = New DateTime(2024, 1, 1, 24)
Catch e As OutOfBoundsException
  Print Left(e.Message, 21)                                   ' expect: there is no such date
End Try
Try
  d = d.AddSeconds(1e300)
Catch e As OutOfBoundsException
  Print Left(e.Message, 44)                                   ' expect: the moment is outside of the years 1 to 9999
End Try
