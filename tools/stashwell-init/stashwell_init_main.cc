// stashwell-init's entry point. (Placeholder until the root layout lands.)
int main() { return 0; }
