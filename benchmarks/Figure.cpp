#include "Figure.h"

#include <cstdio>

void Figure::print() const
{
    const std::string ratioText = ratio ? std::to_string(*ratio) : std::string();
    std::printf("%s\t%s\t%f\t%s\t%s\t%s\n", what.c_str(), size.c_str(), value, unit.c_str(),
                reference.c_str(), ratioText.c_str());
    std::fflush(stdout);
}

std::string nodesText(std::size_t nodes)
{
    std::string digits = std::to_string(nodes);
    for (std::size_t place = digits.size(); place > 3; place -= 3)
        digits.insert(place - 3, ",");
    return digits + " nodes";
}
