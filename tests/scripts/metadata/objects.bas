' Metadata and user data that a script makes itself are empty and hold what it writes.
Dim m As New QTMetaDataKRZ
m.Handle = 5 : m.Lasterror = -2173
Print m.Handle, m.Lasterror                  ' expect: 5 -2173

Dim item As New QTMetaDataItemKRZ
Print item.Lasterror                         ' expect: 0
item.Lasterror = -2174
Print item.Lasterror                         ' expect: -2174

Dim u As New QTUserDataKRZ
Print u.Handle, u.Lasterror, u.Release       ' expect: 0 0 False
u.Lasterror = 7 : u.Handle = -9
Print u.Handle, u.Lasterror, u.Release       ' expect: -9 7 False
u.Release = True
Print u.Handle, u.Lasterror, u.Release       ' expect: -9 7 True
