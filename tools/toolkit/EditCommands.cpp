#include "toolkit/Hooks.h"

namespace sptool {

int runInsert(Session& session, InsertStep const&) {
    return session.notYetAvailable("insert");
}
int runDelete(Session& session, DeleteStep const&) {
    return session.notYetAvailable("delete");
}
int runMode(Session& session, ModeStep const&) {
    return session.notYetAvailable("mode");
}
int runSplit(Session& session, SplitStep const&) {
    return session.notYetAvailable("split");
}
int runJoin(Session& session, JoinStep const&) {
    return session.notYetAvailable("join");
}
int runDrag(Session& session, DragStep const&) {
    return session.notYetAvailable("drag");
}
int runTransform(Session& session, TransformStep const&) {
    return session.notYetAvailable("transform");
}

} // namespace sptool
