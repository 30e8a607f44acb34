#include "simplepath/operations/SimplePathMetaOperation.h"

#include <algorithm>
#include <new>

#include "simplepath/operations/SimplePathOperationFactory.h"

int SimplePathMetaOperation::MetaOpInformation::length() const {
    if (records == nullptr) {
        return 0;
    }
    return records == ownArray ? allocated : (count > 0 ? count : 0);
}

SimplePathMetaOperation::MetaOpInformation::~MetaOpInformation() {
    if (records != nullptr) {
        for (int i = 0, n = length(); i < n; ++i) {
            delete records[i];
        }
        delete[] records;
    }
    for (SegmentIndependentInformation* record : setAside) {
        delete record;
    }
}

int SimplePathMetaOperation::MetaOpInformation::getType() const {
    return 2;
}

SimplePathMetaOperation::SimplePathMetaOperation(SimplePathMetaOperation const& other)
    : SimplePathOperation(other) {}

SimplePathMetaOperation& SimplePathMetaOperation::operator=(SimplePathMetaOperation const& other) {
    if (this != &other) {
        SimplePathOperation::operator=(other);
        deleteMembers();
    }
    return *this;
}

SimplePathMetaOperation::~SimplePathMetaOperation() {
    deleteMembers();
}

void SimplePathMetaOperation::deleteMembers() {
    while (!operations.empty()) {
        delete operations.back();
        operations.pop_back();
    }
}

void SimplePathMetaOperation::addOperation(SimplePathOperation* operation) {
    if (operation != nullptr) {
        operations.push_back(operation);
    }
}

void SimplePathMetaOperation::addOperationList(std::list<SimplePathOperation*> const& list) {
    for (SimplePathOperation* operation : list) {
        if (operation == nullptr) {
            return;
        }
        operations.push_back(operation);
    }
}

SimplePathOperation::Result
SimplePathMetaOperation::executeOperation(std::list<PHashablePointer<SimplePath>>& affectedPaths,
                                          SimplePathChangeInstruction& change) {
    for (SimplePathOperation* operation : operations) {
        if (operation == nullptr) {
            return Success;
        }
        std::list<PHashablePointer<SimplePath>> touched;
        Result const result = operation->executeOperation(touched, change);
        if (result != Success) {
            return result;
        }
        affectedPaths.splice(affectedPaths.end(), touched);
    }
    return Success;
}

void SimplePathMetaOperation::undoOperation() {
    for (auto it = operations.rbegin(); it != operations.rend(); ++it) {
        if (*it == nullptr) {
            return;
        }
        (*it)->undoOperation();
    }
}

int SimplePathMetaOperation::RetreiveSegIndependentInfo(SegmentIndependentInformation*& info) {
    MetaOpInformation* record = nullptr;
    int result = 1;
    if (info != nullptr) {
        record = info->getType() == 2 ? dynamic_cast<MetaOpInformation*>(info) : nullptr;
        if (record == nullptr) {
            return 0;
        }
    } else {
        record = new (std::nothrow) MetaOpInformation();
        if (record == nullptr) {
            return 0;
        }
        info = record;
        result = 2;
    }
    int const count = static_cast<int>(operations.size());
    auto** fresh = new (std::nothrow) SegmentIndependentInformation*[static_cast<std::size_t>(count)];
    if (fresh == nullptr) {
        return 0;
    }
    int const oldLength = record->length();
    record->count = count;
    if (record->records != nullptr) {
        // The old entries are released only up to the new count; the rest are set aside unreleased.
        for (int i = 0; i < oldLength; ++i) {
            if (i < count) {
                delete record->records[i];
            } else if (record->records[i] != nullptr) {
                try {
                    record->setAside.push_back(record->records[i]);
                } catch (std::bad_alloc const&) {
                    delete record->records[i];
                }
            }
        }
        delete[] record->records;
    }
    record->records = record->ownArray = fresh;
    record->allocated = count;
    int i = 0;
    for (SimplePathOperation* operation : operations) {
        SegmentIndependentInformation*& entry = record->records[i++];
        entry = nullptr;
        if (operation->RetreiveSegIndependentInfo(entry) == 0) {
            delete entry;
            entry = nullptr;
            operation->RetreiveSegIndependentInfo(entry);
        }
    }
    return result;
}

int SimplePathMetaOperation::ApplySegIndependentInfo(SegmentIndependentInformation*& info) {
    auto* const record =
        info != nullptr && info->getType() == 2 ? dynamic_cast<MetaOpInformation*>(info) : nullptr;
    if (record == nullptr || record->count < 1 || record->records == nullptr) {
        return 0;
    }
    for (int i = 0, n = std::min(record->count, record->length()); i < n; ++i) {
        SegmentIndependentInformation* entry = record->records[i];
        if (entry == nullptr) {
            continue;
        }
        entry->pathSeg = record->pathSeg;
        entry->pickCallback = record->pickCallback;
        addOperation(SimplePathOperationFactory::createOperationFromSII(entry));
    }
    return 1;
}
