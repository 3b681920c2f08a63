// List functions.
#include <gtest/gtest.h>

#include "lisp_test_support.h"

namespace lisp::test {
namespace {

TEST(LispLists, CarCdrFamily) {
    TestInterp t;
    t.run(L"(setq l '((1 2) (3 4) 5 6))");
    EXPECT_EQ(t.run(L"(list (car l) (cdr '(1)) (car nil) (cdr nil))"), L"((1 2) nil nil nil)");
    EXPECT_EQ(t.run(L"(list (caar l) (cdar l) (cadr l) (cddr l) (caddr l) (cadddr l))"),
              L"(1 (2) (3 4) (5 6) 5 6)");
    EXPECT_EQ(t.run(L"(list (cadar l) (caadr l) (cddddr l) (cdadr l))"), L"(2 3 nil (4))");
    EXPECT_EQ(t.error(L"(car 1)"), L"bad argument type: consp 1");
    EXPECT_EQ(t.error(L"(cadr '(1 . 2))"), L"bad argument type: consp 2");
}

TEST(LispLists, Construction) {
    TestInterp t;
    EXPECT_EQ(t.run(L"(list (cons 1 2) (cons 1 '(2)) (list) (list 1 \"a\"))"), L"((1 . 2) (1 2) nil (1 \"a\"))");
    EXPECT_EQ(t.run(L"(append '(1 2) nil '(3) '(4 5))"), L"(1 2 3 4 5)");
    EXPECT_EQ(t.run(L"(append)"), L"nil");
    EXPECT_EQ(t.run(L"(reverse '(1 (2 3) 4))"), L"(4 (2 3) 1)");
    EXPECT_EQ(t.run(L"(vl-list* 1 2 '(3))"), L"(1 2 3)");
    EXPECT_EQ(t.run(L"(vl-list* 1 2)"), L"(1 . 2)");
    EXPECT_EQ(t.error(L"(append '(1) 2)"), L"bad argument type: listp 2");
}

TEST(LispLists, AccessAndSearch) {
    TestInterp t;
    EXPECT_EQ(t.run(L"(list (length '(1 2 3)) (length nil) (last '(1 2 3)) (last nil))"), L"(3 0 3 nil)");
    EXPECT_EQ(t.run(L"(list (nth 0 '(a b)) (nth 1 '(a b)) (nth 5 '(a b)) (nth -1 '(a b)))"), L"(A B nil nil)");
    EXPECT_EQ(t.run(L"(member \"b\" '(\"a\" \"b\" \"c\"))"), L"(\"b\" \"c\")");
    EXPECT_EQ(t.run(L"(member 9 '(1 2))"), L"nil");
    EXPECT_EQ(t.run(L"(assoc 8 '((0 . \"LINE\") (8 . \"WALLS\")))"), L"(8 . \"WALLS\")");
    EXPECT_EQ(t.run(L"(assoc \"k\" '((\"K\" 1) (\"k\" 2)))"), L"(\"k\" 2)");
    EXPECT_EQ(t.run(L"(subst '(8 . \"NEW\") '(8 . \"OLD\") '((0 . \"LINE\") (8 . \"OLD\")))"),
              L"((0 . \"LINE\") (8 . \"NEW\"))");
    EXPECT_EQ(t.run(L"(list (vl-position 'c '(a b c)) (vl-position 'z '(a)))"), L"(2 nil)");
    EXPECT_EQ(t.run(L"(vl-remove 2 '(1 2 3 2))"), L"(1 3)");
    EXPECT_EQ(t.run(L"(list (vl-list-length '(1 2)) (vl-list-length '(1 . 2)))"), L"(2 nil)");
    EXPECT_EQ(t.error(L"(length '(1 . 2))"), L"bad argument type: listp (1 . 2)");
    EXPECT_EQ(t.error(L"(nth 1.0 '(1))"), L"bad argument type: fixnump: 1.0");
}

TEST(LispLists, HigherOrderFunctions) {
    TestInterp t;
    EXPECT_EQ(t.run(L"(mapcar '+ '(1 2 3) '(10 20))"), L"(11 22)");
    EXPECT_EQ(t.run(L"(mapcar 'strcase '(\"a\" \"b\"))"), L"(\"A\" \"B\")");
    EXPECT_EQ(t.run(L"(apply 'strcat '(\"a\" \"b\"))"), L"\"ab\"");
    EXPECT_EQ(t.run(L"(vl-sort '(3 1 2) '<)"), L"(1 2 3)");
    EXPECT_EQ(t.run(L"(vl-sort '(\"b\" \"a\") (function (lambda (a b) (< a b))))"), L"(\"a\" \"b\")");
    EXPECT_EQ(t.run(L"(vl-sort-i '(30 10 20) '<)"), L"(1 2 0)");
    EXPECT_EQ(t.run(L"(vl-remove-if 'minusp '(1 -2 3))"), L"(1 3)");
    EXPECT_EQ(t.run(L"(vl-remove-if-not 'minusp '(1 -2 3))"), L"(-2)");
    EXPECT_EQ(t.run(L"(vl-member-if 'minusp '(1 -2 3))"), L"(-2 3)");
    EXPECT_EQ(t.run(L"(list (vl-some 'minusp '(1 -2)) (vl-every 'minusp '(1 -2)) (vl-every 'numberp '(1 2)))"),
              L"(T nil T)");
    EXPECT_EQ(t.error(L"(mapcar 'nofn '(1))"), L"no function definition: NOFN");
    EXPECT_EQ(t.error(L"(mapcar 5 '(1))"), L"bad function: 5");
}

TEST(LispLists, SomeAndEveryWalkSeveralListsToTheShortest) {
    TestInterp t;
    EXPECT_EQ(t.run(L"(vl-some '(lambda (a b) (if (> a b) (list a b))) '(1 2 9 10) '(3 4 5))"), L"(9 5)");
    EXPECT_EQ(t.run(L"(vl-some '= '(1 2) '(3 4 2))"), L"nil");
    EXPECT_EQ(t.run(L"(vl-some 'numberp nil)"), L"nil");
    EXPECT_EQ(t.run(L"(vl-every '< '(1 2 9) '(2 3))"), L"T");
    EXPECT_EQ(t.run(L"(vl-every '< '(1 9) '(2 3))"), L"nil");
    EXPECT_EQ(t.run(L"(vl-every 'numberp nil)"), L"T");
    EXPECT_EQ(t.run(L"(setq n 0) (vl-every '(lambda (x) (setq n (1+ n)) (< x 5)) '(1 7 2 3)) n"), L"2");
    EXPECT_EQ(t.error(L"(vl-some 'numberp '(1) 5)"), L"bad argument type: listp 5");
    EXPECT_EQ(t.error(L"(vl-every 'numberp)"), L"too few arguments");
}

}  // namespace
}  // namespace lisp::test
