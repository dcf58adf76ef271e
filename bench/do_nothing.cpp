// A C++ program that does nothing: what starting any program costs here.
int main() {}
