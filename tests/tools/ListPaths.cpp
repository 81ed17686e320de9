// Prints what each cleaner has listed for removal, one path to a line behind the product's name and
// a tab. Deletes nothing.

#include <cleaning/ContentCleaner.h>
#include <products/CompanyCleaner.h>
#include <products/OrvexStudioCleaner.h>
#include <products/ProductManagerCleaner.h>
#include <products/VelantoneMediaServerCleaner.h>

#include <iostream>

using namespace TessaraWorks;

template <typename Cleaner>
class Listed : public Cleaner
{
public:
    void print() const
    {
        for (const auto* list : { &this->directories, &this->files })
            for (const auto& path : *list)
                std::cout << this->getProductName() << "\t" << path.getFullPathName() << std::endl;
    }
};

int main()
{
    Listed<OrvexStudioCleaner>().print();
    Listed<ProductManagerCleaner>().print();
    Listed<VelantoneMediaServerCleaner>().print();
    Listed<ContentCleaner>().print();
    Listed<CompanyCleaner>().print();
}
