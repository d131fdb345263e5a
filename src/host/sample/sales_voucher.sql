select * into sales_voucher from gl_accvouch where 1=0
