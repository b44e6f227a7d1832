// The limit for start-up time: a C++ program that does nothing.
int main() {}
