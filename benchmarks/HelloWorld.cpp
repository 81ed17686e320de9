// The least that a program with the C++ library can do.

#include <iostream>

int main() { std::cout << "Hello, world!" << std::endl; }
