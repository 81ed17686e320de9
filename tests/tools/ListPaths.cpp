// Prints what each cleaner has listed for removal, one path to a line after the product's name and a
// tab. Deletes nothing.

#include "../shared/Products.h"

#include <iostream>

int main()
{
    forEachProduct (
        [] (const auto& product)
        {
            for (const auto& path : product.getPaths())
                std::cout << product.name << "\t" << path.getFullPathName() << std::endl;
        });
}
