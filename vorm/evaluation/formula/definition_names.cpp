#include "definition_names.hpp"

#include "node_counts.hpp"

#include <boost/variant/get.hpp>

namespace vorm::evaluation {

using namespace assessments;

void DefinitionNames::add(const std::string& name, const Expression& tree) {
    if (boost::get<variable>(&tree) != nullptr || boost::get<constantValue>(&tree) != nullptr) {
        return;
    }
    const std::size_t nodes = NodeCounts(tree).of(tree);
    if (nodes <= mostNodes && names_.emplace(tree, name).second) {
        sizes_.insert(nodes);
    }
}

}  // namespace vorm::evaluation
