" Vim syntax file for scripts of krz. Put it into ~/.vim/syntax and say
"   au BufRead,BufNewFile *.bas setf krz
if exists("b:current_syntax")
  finish
endif
syn case ignore

syn keyword krzControl Case Catch Continue Do DownTo Each Else ElseIf End Exit Finally For If In
syn keyword krzControl Loop Next Raise Return Select Step Then To Try Until Wend While
syn keyword krzDeclaration As Assigns ByRef ByVal Class Const Constructor Destructor Dim
syn keyword krzDeclaration Function Inherits Optional Private Property Protected Public ReDim
syn keyword krzDeclaration Shared Static Sub Var
syn keyword krzOperator And Is IsA Mod New Not Or Xor
syn keyword krzConstant False Nil True
syn keyword krzType Boolean Color Double Int32 Int64 Integer Object Single String Variant
syn keyword krzVariable Args Me Self Super
syn keyword krzFunction Array Print Quit UBound

" A word behind a dot is a member, whatever it is called.
syn match krzMember "\.\s*\w\+"hs=s+1 contains=NONE
syn match krzNumber "\<\d\+\(\.\d\+\)\?\(e[+-]\?\d\+\)\?\>"
syn match krzNumber "&\(h\x\+\|o\o\+\|b[01]\+\|c\x\+\)\>"
syn region krzString start=+"+ skip=+""+ end=+"+ oneline
syn match krzInclude "^\s*#Include\>"
syn match krzComment "'.*$" contains=krzTodo
syn match krzComment "//.*$" contains=krzTodo
syn match krzComment "\(\.\s*\)\@<!\<Rem\>.*$" contains=krzTodo
syn match krzComment "\%^#!.*$"
syn keyword krzTodo TODO FIXME contained

hi def link krzControl Statement
hi def link krzDeclaration Keyword
hi def link krzOperator Operator
hi def link krzConstant Constant
hi def link krzType Type
hi def link krzVariable Identifier
hi def link krzFunction Function
hi def link krzNumber Number
hi def link krzString String
hi def link krzInclude PreProc
hi def link krzComment Comment
hi def link krzTodo Todo

let b:current_syntax = "krz"
