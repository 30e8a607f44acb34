#include "toolkit/Hooks.h"

namespace sptool {

// Until the path model is wired in, the chains themselves are the drawing.
int adoptChains(Session&) {
    return kExitOk;
}
std::vector<CubicChain> currentChains(Session& session) {
    return session.chains;
}

int readSpathInput(Session& session, std::string const&) {
    return session.notYetAvailable("reading .spath");
}
int writeSpathOutput(Session& session, std::string const&) {
    return session.notYetAvailable("--format spath");
}

int runInfo(Session& session, InfoStep const&) {
    return session.notYetAvailable("info");
}
int runNearest(Session& session, NearestStep const&) {
    return session.notYetAvailable("nearest");
}
int runIntersect(Session& session, IntersectStep const&) {
    return session.notYetAvailable("intersect");
}
int runPick(Session& session, PickStep const&) {
    return session.notYetAvailable("pick");
}
int runRender(Session& session, RenderStep const&) {
    return session.notYetAvailable("render");
}
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
