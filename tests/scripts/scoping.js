// The scope chain: with pushes an object for the duration of its body.
var o = new Object();
o.p = "from o";
var p = "global p";
with (o) {
    print(p);
    p = "changed in o";
    q = "new global";
}
print(o.p);
print(p);
print(q);
print(typeof o.q);

function readsWith(obj) {
    var local = "local";
    with (obj) {
        return p + " " + local;
    }
}
print(readsWith(o));

function methodCallsInWith() {
    var r = new Object();
    r.name = "r";
    r.who = function_who;
    with (r) {
        return who();
    }
}
function function_who() { return this.name; }
print(methodCallsInWith());

var depth = new Object();
depth.level = 1;
var inner = new Object();
inner.level = 2;
with (depth) {
    with (inner) {
        print(level);
    }
    print(level);
}
with (depth) {
    for (var i = 0; i < 3; i++) {
        if (i == 1) break;
    }
}
print(i);

