// Marks what libkrzruntime offers to programs that embed it; everything else stays inside the
// library.
#pragma once

#define KRZ_API __attribute__((visibility("default")))
