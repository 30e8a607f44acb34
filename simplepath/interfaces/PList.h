#pragma once

#include <cstdint>
#include <iterator>
#include <type_traits>

// A node of PList's circle: the value, then the links.
template <class T> struct PListNode {
    T value;
    PListNode* next = nullptr;
    PListNode* prev = nullptr;

    explicit PListNode(T const& v) : value(v) {}
};

// A circular doubly linked list. head->prev is the last node. Indices wrap around the circle
// (an index at or past length() is taken modulo length()) and are reached from whichever end is nearer.
// Iterators run from their starting node to the end of the list (the tail for forward iterators, the
// head for reverse ones); removing the element an iterator stands on through remove(iterator&)
// advances that iterator.
template <class T> class PList {
    using Node = PListNode<T>;

    template <class V, bool Reverse> class Iter {
      public:
        using iterator_category = std::bidirectional_iterator_tag;
        using value_type = T;
        using difference_type = std::ptrdiff_t;
        using pointer = V*;
        using reference = V&;

        Iter() = default;
        Iter(Node* node, long remaining) : node_(node), remaining_(remaining) {}
        template <class W, class = std::enable_if_t<std::is_same_v<W const, V> && !std::is_same_v<W, V>>>
        Iter(Iter<W, Reverse> const& other) : node_(other.node_), remaining_(other.remaining_) {}

        reference operator*() const { return node_->value; }
        pointer operator->() const { return &node_->value; }
        Iter& operator++() {
            node_ = Reverse ? node_->prev : node_->next;
            if (--remaining_ == 0) {
                node_ = nullptr;
            }
            return *this;
        }
        Iter operator++(int) {
            Iter copy = *this;
            ++*this;
            return copy;
        }
        bool operator==(Iter const& other) const { return node_ == other.node_; }
        bool operator!=(Iter const& other) const { return node_ != other.node_; }
        Node* node() const { return node_; }

      private:
        template <class, bool> friend class Iter;
        friend class PList;
        Node* node_ = nullptr;
        long remaining_ = 0;
    };

  public:
    using iterator = Iter<T, false>;
    using const_iterator = Iter<T const, false>;
    using reverse_iterator = Iter<T, true>;
    using const_reverse_iterator = Iter<T const, true>;

    PList() = default;
    PList(PList const& other) { appendCopies(other); }
    PList& operator=(PList const& other) {
        if (this != &other) {
            PList copy(other);
            swap(copy);
        }
        return *this;
    }
    virtual ~PList() { clearNodes(); }

    // Inserts before the node at index (wrapping); index 0 makes the new node the head.
    virtual void insert(T const& value, int index) {
        Node* const node = new Node(value);
        if (head == nullptr) {
            node->next = node->prev = node;
            head = node;
        } else {
            Node* const at = index <= 0 ? head : getNode(index);
            linkBefore(node, at);
            if (index <= 0) {
                head = node;
            }
        }
        ++count;
    }

    long length() const { return count; }

    T const& add(T const& value) {
        Node* const node = new Node(value);
        if (head == nullptr) {
            node->next = node->prev = node;
            head = node;
        } else {
            linkBefore(node, head);
        }
        ++count;
        return node->value;
    }

    T& operator[](long index) { return getNode(index)->value; }
    T const& operator[](long index) const { return getNode(index)->value; }
    T& operator()(long index) { return getNode(index)->value; }

    int find(T const& value) const {
        Node* node = head;
        for (int i = 0; i < count; ++i, node = node->next) {
            if (node->value == value) {
                return i;
            }
        }
        return -1;
    }

    T* firstThat(int (*test)(T, void*), void* context) {
        Node* node = head;
        for (int i = 0; i < count; ++i, node = node->next) {
            if (test(node->value, context) != 0) {
                return &node->value;
            }
        }
        return nullptr;
    }

    void forEach(void (*action)(T, void*), void* context) const {
        Node* node = head;
        for (int i = 0; i < count; ++i, node = node->next) {
            action(node->value, context);
        }
    }

    int move(int from, int to) {
        if (from < 0 || to < 0 || from >= count || to >= count || from == to) {
            return 0;
        }
        T const value = getNode(from)->value;
        removeByIndex(from);
        insert(value, to);
        return 1;
    }

    void remove(int index) { removeByIndex(index); }
    void removeByIndex(int index) {
        if (head != nullptr) {
            unlinkAndFree(getNode(index));
        }
    }
    template <class V, bool R> void remove(Iter<V, R>& position) {
        Node* const node = position.node_;
        if (node == nullptr) {
            return;
        }
        ++position;
        unlinkAndFree(node);
    }

    void empty() {
        while (count > 0) {
            removeByIndex(0);
        }
    }

    void join(PList& other) { inject(other, count); }
    PList& operator+=(PList& other) {
        join(other);
        return *this;
    }

    // Moves every node of other before the node at index; other becomes empty.
    void inject(PList& other, int index) {
        if (&other == this || other.head == nullptr) {
            return;
        }
        Node* const first = other.head;
        Node* const last = other.head->prev;
        int const moved = other.count;
        other.head = nullptr;
        other.count = 0;
        if (head == nullptr) {
            head = first;
            count = moved;
            return;
        }
        bool const atEnd = index >= count;
        Node* const at = (index <= 0 || atEnd) ? head : getNode(index);
        Node* const before = at->prev;
        before->next = first;
        first->prev = before;
        last->next = at;
        at->prev = last;
        if (index <= 0) {
            head = first;
        }
        count += moved;
    }

    bool operator==(PList const& other) const {
        if (count != other.count) {
            return false;
        }
        Node* a = head;
        Node* b = other.head;
        for (int i = 0; i < count; ++i, a = a->next, b = b->next) {
            if (!(a->value == b->value)) {
                return false;
            }
        }
        return true;
    }
    bool operator!=(PList const& other) const { return !(*this == other); }

    iterator begin() { return it(0); }
    iterator end() { return {}; }
    const_iterator begin() const { return it(0); }
    const_iterator end() const { return {}; }
    reverse_iterator rbegin() { return rit(count - 1); }
    reverse_iterator rend() { return {}; }
    const_reverse_iterator rbegin() const { return rit(count - 1); }
    const_reverse_iterator rend() const { return {}; }
    // Forward from index to the tail.
    iterator it(int index) {
        return index >= 0 && index < count ? iterator(getNode(index), count - index) : end();
    }
    const_iterator it(int index) const {
        return index >= 0 && index < count ? const_iterator(getNode(index), count - index) : end();
    }
    // Backward from index to the head.
    reverse_iterator rit(int index) {
        return index >= 0 && index < count ? reverse_iterator(getNode(index), index + 1) : rend();
    }
    const_reverse_iterator rit(int index) const {
        return index >= 0 && index < count ? const_reverse_iterator(getNode(index), index + 1) : rend();
    }

    // Resolves an index as described above; null for an empty list. A negative index counts as 0.
    Node* getNode(long index) const {
        if (head == nullptr) {
            return nullptr;
        }
        long i = index < 0 ? 0 : index % count;
        if (i >= count / 2) {
            Node* node = head->prev;
            for (long k = count - 1; k > i; --k) {
                node = node->prev;
            }
            return node;
        }
        Node* node = head;
        for (long k = 0; k < i; ++k) {
            node = node->next;
        }
        return node;
    }

    void swap(PList& other) {
        Node* const h = head;
        head = other.head;
        other.head = h;
        std::int32_t const c = count;
        count = other.count;
        other.count = c;
    }

    Node* head = nullptr;
    std::int32_t count = 0;

  private:
    static void linkBefore(Node* node, Node* at) {
        node->next = at;
        node->prev = at->prev;
        at->prev->next = node;
        at->prev = node;
    }

    void unlinkAndFree(Node* node) {
        if (count == 1) {
            head = nullptr;
        } else {
            node->prev->next = node->next;
            node->next->prev = node->prev;
            if (node == head) {
                head = node->next;
            }
        }
        --count;
        delete node;
    }

    void appendCopies(PList const& other) {
        Node* node = other.head;
        for (int i = 0; i < other.count; ++i, node = node->next) {
            add(node->value);
        }
    }

    void clearNodes() {
        Node* node = head;
        for (int i = 0; i < count; ++i) {
            Node* const next = node->next;
            delete node;
            node = next;
        }
        head = nullptr;
        count = 0;
    }
};
