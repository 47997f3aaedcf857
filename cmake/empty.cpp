// Lets a room without sources of its own be a library.
