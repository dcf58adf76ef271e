' Objects: members, assignable methods with parameters, casts, Variants, Nil.
Dim block As New MemoryBlock(8)
block.Byte(3) = 77
block.Byte(4) = block.Byte(3) + 1
Print block.Byte(3), block.Byte(4), block.Size     ' expect: 77 78 8
Dim thing As Object = block
Print thing IsA MemoryBlock, thing IsA RuntimeException, thing Is block   ' expect: True False True
Print MemoryBlock(thing).Size                      ' expect: 8
Try
  Print RuntimeException(thing).Message
Catch e As IllegalCastException
  Print "no"                                       ' expect: no
End Try

Dim error As New OutOfBoundsException
error.Message = "mine"
Dim general As RuntimeException = error
Print general.Message, general                     ' expect: mine OutOfBoundsException

Dim v As Variant
Print v, v = Nil                                   ' expect: Nil True
v = 5
Dim n As Integer = v
Print v, n, v = 5                                  ' expect: 5 5 True
v = "text"
Print v, v = "TEXT"                                ' expect: text True
v = block
Print MemoryBlock(v).Size, v IsA MemoryBlock       ' expect: 8 True

Dim none As MemoryBlock
Print none, none Is Nil, none <> Nil               ' expect: Nil True False
If none = Nil Then Print "nil"                     ' expect: nil
If block <> Nil Then Print "not nil"               ' expect: not nil
