#include <exception>

#include "kiv/sceneFileHandler.h"

#include "overrides.h"
#include "reading.h"

namespace bound {

namespace {

using kiv::Path;
using kiv::SceneFileHandler;
using kiv::UndoableCommand;

class PySceneFileHandler : public Derivable<SceneFileHandler>
{
public:
    using Derivable::Derivable;
    KIV_PURE_NOUN(std::vector<std::string>, suffixes)
    KIV_PURE_CONST_METHOD(std::string, file, (const Path& gateway), (gateway))

    Mounting read(const std::string& name, const Progress& progress) override
    {
        // What the progress function throws to cancel has to come out as it went in.
        const auto thrown = std::make_shared<std::exception_ptr>();
        try {
            return wrapped(reading([&] { return readInPython(name, watched(progress, thrown)); }));
        } catch (...) {
            if (*thrown) {
                std::rethrow_exception(*thrown);
            }
            throw;
        }
    }

    UndoableCommand::Ptr copyMountCmd(const Path& source, const Path& gateway) override
    {
        return reading([&] { return copyInPython(source, gateway); });
    }

private:
    static Progress watched(const Progress& progress, std::shared_ptr<std::exception_ptr> thrown)
    {
        if (!progress) {
            return {};
        }
        return [progress, thrown = std::move(thrown)](float fraction) {
            try {
                return progress(fraction);
            } catch (...) {
                *thrown = std::current_exception();
                throw;
            }
        };
    }

    static Mounting wrapped(Mounting mounting)
    {
        return [mounting = std::move(mounting)](const Path& gateway) {
            return reading([&] { return mounting(gateway); });
        };
    }

    Mounting readInPython(const std::string& name, const Progress& progress)
        KIV_CALL_PYTHON(Mounting, read, this->_python.self().attr(pythonKey)(name, progress),
                        refuse(this->_python, pythonKey))

            UndoableCommand::Ptr copyInPython(const Path& source, const Path& gateway)
                KIV_CALL_PYTHON(UndoableCommand::Ptr, copyMountCmd,
                                this->_python.self().attr(pythonKey)(source, gateway),
                                return Bound::copyMountCmd(source, gateway))
};

} // namespace

void bindSceneFiles(nb::module_& module)
{
    Class<SceneFileHandler, PySceneFileHandler> type(module, "SceneFileHandler");
    type.def(nb::init<>());
    type.function("runTimesFor", &SceneFileHandler::runTimesFor, "file"_a);
    type.property("suffixes", &SceneFileHandler::suffixes);
    type.method("read", &SceneFileHandler::read, "file"_a, "progress"_a.none() = nb::none());
    type.method("file", &SceneFileHandler::file, "gateway"_a);
    type.method("copyMountCmd", &SceneFileHandler::copyMountCmd, "source"_a, "gateway"_a);
}

} // namespace bound
