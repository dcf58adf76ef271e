' The list of user data that a command is about.
#Include "metadata.bas"

Function ListOf(m As Movie) As QTUserDataKRZ
  Dim u As QTUserDataKRZ
  If CommandLine.Has("track") Then u = SelectTrack(m, CommandLine.Value("track")).UserData Else u = m.UserDataKRZ
  If u Is Nil Then Fail("the user data cannot be read", 3)
  Return u
End Function

Function IndexArgument(position As Integer) As Integer
  If Args.Ubound < position Then Return 1
  Return NumberIn(Args(position), "INDEX")
End Function

Sub CheckType(type As String)
  If Len(type) <> 4 Then Raise New UsageError(type + ": a type has four letters, such as ©nam")
End Sub

' Ends the command when the list did not do what it was asked.
Sub CheckError(u As QTUserDataKRZ, what As String)
  If u.Lasterror = -2026 Then Fail("the list has no " + what, 1)
  If u.Lasterror <> 0 Then Fail(what + " cannot be changed so (error " + Str(u.Lasterror) + ")", 1)
End Sub
