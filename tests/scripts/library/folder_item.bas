' Paths, and what is done to the files and folders there. Runs in an empty folder of its own.
For Each path As String In Array("a/b.txt", "a/b/", "/", "/x", "b", "..", "a//b")
  Dim item As New FolderItem(path)
  Dim parent As FolderItem = item.Parent
  If parent = Nil Then Print item.Name, "has no parent" Else Print item.Name, "in", parent.Path
Next
' expect: b.txt in a
' expect: b in a
' expect:  has no parent
' expect: x in /
' expect: b in .
' expect: .. in ../..
' expect: b in a

Dim folder As New FolderItem("clips")
Print folder.Exists, folder.Directory, folder.Length             ' expect: False False 0
folder.CreateFolder
Print folder.Exists, folder.Directory, folder.Count              ' expect: True True 0
For Each name As String In Array("b.txt", "a.txt", "c.txt")
  Dim file As TextOutputStream = TextOutputStream.Create(folder.Child(name))
  file.Write(name)
  file.Close
Next
Print folder.Count, folder.ChildAt(0).Name, folder.ChildAt(2).Path   ' expect: 3 a.txt clips/c.txt
Print folder.ChildAt(1).Length, folder.ChildAt(1).IsFolder        ' expect: 5 False
Dim age As Double = DateTime.Now.SecondsFrom1970 - folder.ModificationDate.SecondsFrom1970
Print age > -5 And age < 600                                       ' expect: True

' Into a folder under the same name, or to a new path.
Dim target As New FolderItem("copies")
target.CreateFolder
folder.Child("a.txt").CopyTo(target)
folder.Child("a.txt").CopyTo(target.Child("again.txt"))
Dim moved As FolderItem = folder.Child("b.txt")
moved.MoveTo(target)
Print moved.Path, folder.Child("b.txt").Exists, target.Count       ' expect: copies/b.txt False 3
Print TextInputStream.Open("copies/again.txt").ReadAll             ' expect: a.txt

' Deleting what is met on the way does not skip anything.
For i As Integer = 0 To target.Count - 1
  target.ChildAt(i).Delete
Next
Print target.Count                                                 ' expect: 0

Sub Attempt(what As String)
  Dim clips As New FolderItem("clips")
  Try
    Select Case what
    Case "create"
      clips.CreateFolder
    Case "delete folder"
      clips.Delete
    Case "delete nothing"
      clips.Child("none").Delete
    Case "copy over"
      clips.Child("a.txt").CopyTo(clips.Child("c.txt"))
    Case "move over"
      clips.Child("a.txt").MoveTo(clips.Child("c.txt"))
    Case "copy folder"
      clips.CopyTo(New FolderItem("elsewhere"))
    Case "list a file"
      Print clips.Child("a.txt").Count
    Case "date of nothing"
      Print clips.Child("none").ModificationDate
    Case "no name"
      Print clips.Child("a/b").Path
    Case "beyond"
      Print clips.ChildAt(2).Path
    Case "no path"
      Dim item As New FolderItem("")
      item.Delete
    Case "to Nil"
      clips.CopyTo(Nil)
    End Select
    Print "done"
  Catch e As RuntimeException
    Print e.Message
  End Try
End Sub
Attempt("create")
' expect: cannot create the folder "clips": File exists; choose another name, or delete what is there first
Attempt("delete folder")
' expect: cannot delete "clips": Is a directory; give the path of a file, this is a folder
Attempt("delete nothing")
' expect: cannot delete "clips/none": No such file or directory; check the path, and that its folder exists
Attempt("copy over")
' expect: cannot create "clips/c.txt": File exists; choose another name, or delete what is there first
Attempt("move over")
' expect: cannot create "clips/c.txt": File exists; choose another name, or delete what is there first
Attempt("copy folder")
' expect: cannot copy "clips": Is a directory; give the path of a file, this is a folder
Attempt("list a file")
' expect: cannot list "clips/a.txt": Not a directory; check the path, a part of it is a file
Attempt("date of nothing")
' expect: cannot find "clips/none": No such file or directory; check the path, and that its folder exists
Attempt("no name")
' expect: "a/b" is no name of a file; give one name, without slashes
Attempt("beyond")
' expect: index 2 is not below the folder's Count of 2
Attempt("no path")
' expect: the path is empty; give the path of a file or folder
Attempt("to Nil")
' expect: the target is Nil; give a FolderItem
Print TextInputStream.Open("clips/a.txt").ReadAll, TextInputStream.Open("clips/c.txt").ReadAll   ' expect: a.txt c.txt
