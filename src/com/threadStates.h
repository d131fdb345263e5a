#pragma once

/// \file
/// The state of each thread that uses the DLL: the library's context. It is created when the thread needs it first and
/// destroyed on the same thread: before the thread closes COM, since it has objects of the host, or when the DLL is
/// unloaded. Only a thread that ends without closing COM leaves it behind: nobody could release the host's objects any
/// more.
namespace z7::com {

/// Keeps the contexts of all threads here from now on. Returns whether the system had room for it. Called when the DLL
/// is loaded, the functions below only after it.
[[nodiscard]] bool openThreadStates() noexcept;
/// Ends that. No state may exist any more.
void closeThreadStates() noexcept;

/// Gives the calling thread its state, if it has none. Exhausted memory is std::bad_alloc; the library itself asks for
/// the state where nothing can be raised.
void makeThreadState();
/// The number of threads that have a state, at this moment.
[[nodiscard]] long threadStateCount() noexcept;
/// Whether the calling thread has a state.
[[nodiscard]] bool hasThreadState() noexcept;
/// Destroys the calling thread's state, if it has one.
void destroyThreadState() noexcept;
/// Forgets the calling thread's state, if it has one, without touching anything in it; called when the thread ends.
void abandonThreadState() noexcept;

} // namespace z7::com
