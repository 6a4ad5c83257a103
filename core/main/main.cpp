// Placeholder entry point until the driver lands.
int main() { return 0; }
