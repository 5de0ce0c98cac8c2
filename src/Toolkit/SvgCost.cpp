#include "Toolkit/SvgCost.h"

#include <QHash>
#include <QString>
#include <QXmlStreamReader>
#include <algorithm>
#include <vector>

namespace korvane::platform {
namespace {

constexpr int deepest = 200;

struct Element {
    std::vector<int> children;
    QString refersTo;
    int cost = 0;  // zero until it is known
    bool open = false;
};

class Tree {
public:
    Tree(const QByteArray &drawing, int most) : limit(most)
    {
        QXmlStreamReader xml(drawing);
        std::vector<int> path;
        while (!xml.atEnd() && static_cast<int>(elements.size()) < limit && path.size() < deepest) {
            const auto token = xml.readNext();
            if (token == QXmlStreamReader::EndElement)
                path.pop_back();
            if (token != QXmlStreamReader::StartElement)
                continue;
            const int number = static_cast<int>(elements.size());
            elements.emplace_back();
            if (!path.empty())
                elements[static_cast<std::size_t>(path.back())].children.push_back(number);
            path.push_back(number);
            for (const auto &attribute : xml.attributes()) {
                if (attribute.name() == QLatin1String("href") && attribute.value().startsWith(QLatin1Char('#')))
                    elements.back().refersTo = attribute.value().mid(1).toString();
                if (attribute.qualifiedName() == QLatin1String("id")
                    || attribute.qualifiedName() == QLatin1String("xml:id"))
                    identifiers.insert(attribute.value().toString(), number);
            }
        }
        wellFormed = xml.atEnd() && !xml.hasError();
    }

    int cost() { return wellFormed && !elements.empty() ? cost(0, 0) : limit; }

private:
    int cost(int number, int depth)
    {
        Element &element = elements[static_cast<std::size_t>(number)];
        if (element.cost > 0)
            return element.cost;
        if (element.open || depth > deepest)
            return limit;
        element.open = true;
        int sum = 1;
        for (const int child : element.children)
            sum = std::min(limit, sum + cost(child, depth + 1));
        if (!element.refersTo.isEmpty())
            if (const auto target = identifiers.constFind(element.refersTo); target != identifiers.cend())
                sum = std::min(limit, sum + cost(*target, depth + 1));
        element.open = false;
        element.cost = sum;
        return sum;
    }

    int limit;
    bool wellFormed = false;
    std::vector<Element> elements;
    QHash<QString, int> identifiers;
};

}  // namespace

int svgCost(const QByteArray &drawing, int limit)
{
    return std::min(limit, Tree(drawing, limit).cost());
}

}  // namespace korvane::platform
